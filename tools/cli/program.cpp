// program.cpp: runs one command, and turns its failure into a line on stderr and an exit status.
#include "program.h"

#include "failure_text.h"
#include "help.h"
#include "man_page.h"
#include "parser.h"

#include <qelplat4/terminal.h>

#include <algorithm>
#include <exception>
#include <new>

namespace tool {
namespace {

constexpr int kClosedPipe = 141; // as a shell shows a program that a closed pipe has ended

/// An argument becomes text of the library, which has no place for other bytes.
void CheckText(const std::vector<std::string>& arguments)
{
    for (const std::string& argument : arguments) {
        if (Utf8(Wide(argument)) != argument)
            throw UsageFailure("an argument is no text in UTF-8");
    }
}

EExit RunInvocation(const SInvocation& invocation, const SSurroundings& surroundings)
{
    if (invocation.arguments.Has("--help")) {
        surroundings.out << (invocation.command == nullptr ? ProgramHelp()
                                                           : CommandHelp(*invocation.command));
        return EExit::eDone;
    }
    if (invocation.arguments.Has("--version")) {
        surroundings.out << "qelprop " << ProgramVersion() << '\n';
        return EExit::eDone;
    }
    if (invocation.arguments.Has("--man")) {
        surroundings.out << ManPage();
        return EExit::eDone;
    }
    if (invocation.command == nullptr)
        throw UsageFailure("no command given", "'qelprop --help' lists them");
    CContext context(surroundings, invocation.arguments);
    try {
        const EExit exit = invocation.command->run(context);
        context.TellOfLostLog();
        return exit;
    } catch (SFailure& failure) {
        if (failure.file.empty() && failure.exit == EExit::eRefused)
            failure.file = invocation.arguments.Text("FILE"); // what was asked of it is refused
        throw;
    }
}

EExit ParseAndRun(const std::vector<std::string>& arguments, const SSurroundings& surroundings)
{
    CheckText(arguments);
    return RunInvocation(ParseCommandLine(arguments), surroundings);
}

/// Runs, and catches what was thrown. @return whether it went well
bool RunGuarded(const std::vector<std::string>& arguments, const SSurroundings& surroundings, EExit& exit,
                SFailure& failure)
{
    try {
        exit = ParseAndRun(arguments, surroundings);
        return true;
    } catch (const SFailure& thrown) {
        // Input that an interrupt has ended looks like one that is cut short.
        failure = qel::WasInterrupted() ? InterruptFailure() : thrown;
    } catch (CException* thrown) {
        thrown->Delete();
        failure = FailureOf(qel::kFrameworkException, "", "");
    } catch (const std::bad_alloc&) {
        failure = MakeFailure(EExit::eFailed, "out of memory");
    } catch (const std::exception& thrown) {
        failure = MakeFailure(EExit::eFailed, thrown.what());
    }
    return false;
}

} // namespace

int RunProgram(const std::vector<std::string>& arguments, const SSurroundings& surroundings)
{
    EExit exit = EExit::eDone;
    SFailure failure;
    bool done = RunGuarded(arguments, surroundings, exit, failure);
    surroundings.out.flush();
    if (!surroundings.out) {
        if (qel::IsOutputClosed())
            return kClosedPipe;
        if (done)
            failure = MakeFailure(EExit::eFailed, "cannot write the output");
        done = false;
    }
    if (done)
        return static_cast<int>(exit);
    const bool json = std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
    surroundings.err << FailureText(failure, json);
    return static_cast<int>(failure.exit);
}

} // namespace tool
