// main.cpp: the program qelprop.
#include "cli/program.h"

#include <qelplat4/terminal.h>

#include <iostream>

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    qel::PrepareStreams();
    qel::CatchInterrupts(true);
    constexpr int kNoTerminal = 0;
    std::istream in(qel::StandardInput());
    const tool::SSurroundings surroundings{in,
                                           std::cout,
                                           std::cerr,
                                           qel::IsTerminal(qel::EStream::eIn),
                                           qel::IsTerminal(qel::EStream::eOut),
                                           qel::IsTerminal(qel::EStream::eErr),
                                           qel::TerminalColumns(kNoTerminal)};
    return tool::RunProgram(qel::CommandLineArguments(argc, argv), surroundings);
}
