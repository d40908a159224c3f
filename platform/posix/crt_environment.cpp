// crt_environment.cpp: the original runtime's way to change the environment.
#include <qelplat4/crt.h>

#include <cerrno>
#include <cstdlib> // setenv
#include <cstring>

int _putenv_s(const char* name, const char* value)
{
    if (name == nullptr || value == nullptr || *name == '\0' || std::strchr(name, '=') != nullptr)
        return EINVAL;
    const int failed = *value == '\0' ? unsetenv(name) : setenv(name, value, 1);
    return failed == 0 ? 0 : errno;
}
