// encoding_fuzz.cpp: any bytes read as a stored value, and everything asked of what they give.
#include <qellib4/qellib4.h>
#include <qelprop4/qelproperty.h>

#include "libeval/value/encoding.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

/// Reads the value. @return false when the bytes end early, as the code says
template <class Work>
bool Reads(Work&& work)
{
    try {
        work();
    } catch (CQelException* exception) {
        if (exception->GetCode() != qel::kEndOfStream)
            std::abort();
        exception->Delete();
        return false;
    }
    return true;
}

void Require(bool truth)
{
    if (!truth)
        std::abort();
}

bool HasSameBytes(const TavBlob& left, const TavBlob& right)
{
    return left.GetSize() == right.GetSize() &&
           std::memcmp(left.GetData(), right.GetData(), left.GetSize()) == 0;
}

/// Every operation, also under every other type: none may read outside what the value holds.
void Ask(CQelProperty value)
{
    for (int type = -1; type <= 15; ++type) {
        value.SetType(static_cast<CQelProperty::EType>(type));
        const CQelProperty copy = value;
        value.String();
        value.Double();
        Require(!(value < copy));
        if (value == copy)
            Require(!(copy < value));
        TavBlob blob;
        blob << value;
        CQelProperty back;
        blob >> back;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CQelProperty value;
    value.SetString(L"before");
    const bool isRead = Reads([&] { qel::DecodeFrom(data, size, value); });

    CQelMemFile file(false, 64, 64);
    file.Write(data, static_cast<unsigned int>(size));
    file.Rewind();
    CQelProperty fromFile;
    Require(Reads([&] { file >> fromFile; }) == isRead);
    Require(isRead || (value.IsNull() && fromFile.IsNull()));

    TavBlob flat;
    flat << value;
    TavBlob streamed;
    CQelMemFile out(false, 64, 64);
    out << fromFile;
    out.Rewind();
    streamed.Load(&out);
    Require(HasSameBytes(flat, streamed));
    Ask(value);
    return 0;
}
