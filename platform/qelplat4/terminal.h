// terminal.h: a program's place at a terminal: its arguments, its streams, the keys that stop it.
#pragma once

#include <qelplat4/export.h>

#include <streambuf>
#include <string>
#include <vector>

namespace qel {

enum class EStream
{
    eIn = 0,
    eOut = 1,
    eErr = 2
};

/// The program's arguments without its own name, in UTF-8 where the system knows their characters.
QELPLAT4_API std::vector<std::string> CommandLineArguments(int argc, char** argv);

QELPLAT4_API bool IsTerminal(EStream stream);
/// Columns of the terminal that standard output, else standard error, is; `absent` where neither is one.
QELPLAT4_API int TerminalColumns(int absent);

/// Makes the standard streams carry bytes unchanged.
/// A closed pipe or a file at its limit is an error of writing from then on instead of the program's end.
QELPLAT4_API void PrepareStreams();

/// Standard input; it ends when the user wishes to stop, even while nothing comes.
/// @return lives as long as the process
QELPLAT4_API std::streambuf* StandardInput();

/// Whether the program that standard output was piped to has closed it.
QELPLAT4_API bool IsOutputClosed();

/// Whether the user's wish to stop is remembered from now on: Ctrl+C, a request to terminate, a terminal that
/// goes. A second one ends the process at once, as the first does while they are not caught.
QELPLAT4_API void CatchInterrupts(bool caught);
QELPLAT4_API bool WasInterrupted();
/// Forgets, or pretends, that the user wished to stop.
QELPLAT4_API void SetInterrupted(bool interrupted);

/// Makes `name` ("de_DE") the user's locale for this process.
/// @return false where there is no such locale, or the system knows one user's locale only
QELPLAT4_API bool UseLocale(const std::string& name);

/// Columns that a character takes at a terminal: 0 for what joins the one before, 2 for wide ones, else 1.
QELPLAT4_API int CharacterColumns(char32_t character);

} // namespace qel
