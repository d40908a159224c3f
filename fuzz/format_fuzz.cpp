// format_fuzz.cpp: any printf format over any payload.
#include "libeval/value/payload_format.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::uint64_t payload = 0;
    if (size < sizeof payload + 1)
        return 0;
    std::memcpy(&payload, data, sizeof payload);
    const wchar_t decimalPoint = data[sizeof payload] % 2 == 0 ? L'.' : L',';
    // One byte per character: what a format means lies in ASCII, and any other character is plain text.
    const std::wstring format(data + sizeof payload + 1, data + size);
    if (qel::FormatPayload(format, payload, decimalPoint).size() > qel::kLongestFormatted)
        std::abort();
    return 0;
}
