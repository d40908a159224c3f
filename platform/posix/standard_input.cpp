// standard_input.cpp: standard input that a caught interrupt ends, even while nothing comes.
#include <qelplat4/terminal.h>

#include <array>
#include <cerrno>
#include <system_error>

#include <poll.h>
#include <unistd.h>

namespace qel {
namespace {

// The stream of the C++ library begins a read anew that a signal has cut short.
class CInputBuffer : public std::streambuf
{
protected:
    int_type underflow() override
    {
        const ssize_t size = Read();
        if (size < 0) // the stream turns it into its own state; an end would pass what was read for all
            throw std::system_error(errno, std::generic_category());
        if (size == 0)
            return traits_type::eof();
        setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + size);
        return traits_type::to_int_type(*gptr());
    }

private:
    ssize_t Read()
    {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        while (!WasInterrupted()) {
            if (poll(&input, 1, -1) < 0 && errno == EINTR)
                continue;
            return read(STDIN_FILENO, m_bytes.data(), m_bytes.size());
        }
        return 0;
    }

    std::array<char, 1 << 16> m_bytes{};
};

} // namespace

std::streambuf* StandardInput()
{
    static CInputBuffer buffer;
    return &buffer;
}

} // namespace qel
