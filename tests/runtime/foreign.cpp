// foreign.cpp: throws, and lets through what others throw.
#include "foreign.h"

#include <stdexcept>
#include <string>

namespace foreign {

int ThrownAndCaught(int number)
{
    try {
        throw std::runtime_error(std::to_string(number));
    } catch (const std::exception& error) {
        return std::stoi(error.what());
    }
}

void CallBack(void (*host)())
{
    const std::string ended = "when the exception passes";
    host();
}

} // namespace foreign
