// code_page.cpp: the code pages by their numbers, and bytes turned into wide text by them.
#include "code_page.h"

#include "bounded_text.h"
#include "code_page_table.h"
#include "locale_of.h"

#include <qelplat4/nls.h>
#include <qelplat4/utf16.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <cwchar>
#include <map>
#include <mutex>

namespace qel {
namespace {

struct SDoubleBytePage
{
    unsigned int number;
    const char* converter;
    wchar_t substitute;
};
constexpr std::array<SDoubleBytePage, 4> kDoubleBytePages = {{{932, "ibm-943_P15A-2003", L'・'},
                                                              {936, "windows-936-2000", L'?'},
                                                              {949, "windows-949-2000", L'?'},
                                                              {950, "windows-950-2000", L'?'}}};

struct SNamedPage
{
    unsigned int number;
    const char* converter;
};
/// Pages whose number is in no name that ICU has for them.
constexpr std::array<SNamedPage, 13> kNamedPages = {{{10000, "macintosh"},
                                                     {20127, "US-ASCII"},
                                                     {20866, "KOI8-R"},
                                                     {20932, "EUC-JP"},
                                                     {21866, "KOI8-U"},
                                                     {50220, "ISO-2022-JP"},
                                                     {50221, "ISO-2022-JP"},
                                                     {50222, "ISO-2022-JP"},
                                                     {50225, "ISO-2022-KR"},
                                                     {51932, "EUC-JP"},
                                                     {51949, "EUC-KR"},
                                                     {52936, "HZ"},
                                                     {54936, "GB18030"}}};

constexpr unsigned int kFirstIsoPage = 28591; // ISO 8859-1; the sixteen parts have the next numbers
constexpr unsigned int kIsoParts = 16;

std::string ConverterName(unsigned int number)
{
    for (const SNamedPage& page : kNamedPages)
        if (page.number == number)
            return page.converter;
    if (number >= kFirstIsoPage && number < kFirstIsoPage + kIsoParts)
        return "ISO-8859-" + std::to_string(number - kFirstIsoPage + 1);
    return {};
}

CConverter Opened(const std::string& name)
{
    UErrorCode status = U_ZERO_ERROR;
    CConverter converter(name.empty() ? nullptr : ucnv_open(name.c_str(), &status));
    return U_SUCCESS(status) != 0 ? std::move(converter) : nullptr;
}

/// Unicode's encodings are reached by their own numbers only, and those of several bytes a unit not at all.
bool IsUnicode(const UConverter& converter)
{
    constexpr std::array<UConverterType, 9> kUnicodeTypes = {
        UCNV_UTF8,  UCNV_UTF16,           UCNV_UTF16_BigEndian,    UCNV_UTF16_LittleEndian,
        UCNV_UTF32, UCNV_UTF32_BigEndian, UCNV_UTF32_LittleEndian, UCNV_UTF7,
        UCNV_CESU8};
    const UConverterType type = ucnv_getType(&converter);
    return std::find(kUnicodeTypes.begin(), kUnicodeTypes.end(), type) != kUnicodeTypes.end();
}

CConverter OpenedFor(unsigned int number)
{
    for (const std::string& name :
         {ConverterName(number), "windows-" + std::to_string(number), "cp" + std::to_string(number)})
        if (CConverter converter = Opened(name); converter != nullptr && !IsUnicode(*converter))
            return converter;
    return nullptr;
}

/// A page that ICU's converter reads afresh each time: those of up to four bytes and those that shift.
class CConvertedPage : public CCodePage
{
public:
    explicit CConvertedPage(std::string name) : m_name(std::move(name)) {}

    std::wstring Decode(std::string_view bytes) const override
    {
        const CConverter converter = Opened(m_name);
        if (converter == nullptr)
            return {};
        UErrorCode status = U_ZERO_ERROR;
        std::u16string units(bytes.size() * 2 + 1, u'\0'); // no byte gives more than two units
        const int room = static_cast<int>(std::min<std::size_t>(units.size(), INT_MAX));
        const int count = ucnv_toUChars(converter.get(), units.data(), room, bytes.data(),
                                        static_cast<int>(bytes.size()), &status);
        return U_SUCCESS(status) != 0 ? FromUtf16(units.data(), static_cast<std::size_t>(count))
                                      : std::wstring();
    }

private:
    std::string m_name;
};

class CUnicodePage : public CCodePage
{
public:
    using Decoder = std::wstring (*)(std::string_view bytes);

    explicit CUnicodePage(Decoder decoder) : m_decoder(decoder) {}
    std::wstring Decode(std::string_view bytes) const override { return m_decoder(bytes); }

private:
    Decoder m_decoder;
};

std::unique_ptr<const CCodePage> MakePage(unsigned int number)
{
    if (number == CP_UTF8 || number == CP_UTF7)
        return std::make_unique<const CUnicodePage>(number == CP_UTF8 ? DecodeUtf8 : DecodeUtf7);
    for (const SDoubleBytePage& page : kDoubleBytePages)
        if (page.number == number)
            if (const CConverter converter = Opened(page.converter); converter != nullptr)
                return MakeDoubleBytePage(number, *converter, page.substitute);
    const CConverter converter = OpenedFor(number);
    if (converter == nullptr)
        return nullptr;
    if (ucnv_getMaxCharSize(converter.get()) == 1)
        return MakeSingleBytePage(number, *converter);
    UErrorCode status = U_ZERO_ERROR;
    return std::make_unique<const CConvertedPage>(ucnv_getName(converter.get(), &status));
}

/// The page of the user's language; UTF-8 for one that has no page.
unsigned int UserPage()
{
    const unsigned long number =
        std::wcstoul(UserLocale(ECategory::eCharacters).ansiCodePage.c_str(), nullptr, 10);
    return number != 0 ? static_cast<unsigned int>(number) : CP_UTF8;
}

} // namespace

const CCodePage* CodePageNumbered(unsigned int number)
{
    // Neither is ever freed: a thread may use its page while others end the process.
    static std::mutex& guard = *new std::mutex;
    static auto& known = *new std::map<unsigned int, std::unique_ptr<const CCodePage>>;
    const std::lock_guard<std::mutex> lock(guard);
    if (const auto found = known.find(number); found != known.end())
        return found->second.get();
    std::unique_ptr<const CCodePage> page = MakePage(number);
    return page != nullptr ? known.emplace(number, std::move(page)).first->second.get() : nullptr;
}

} // namespace qel

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR bytes, int length, LPWSTR out, int capacity)
{
    using namespace qel;
    if (bytes == nullptr || length == 0 || !CBoundedText::IsUsable(out, capacity))
        return FailWith(ERROR_INVALID_PARAMETER);
    if ((flags & ~MB_PRECOMPOSED) != 0)
        return FailWith(ERROR_INVALID_FLAGS);
    const CCodePage* page = CodePageNumbered(codePage == CP_ACP ? UserPage() : codePage);
    if (page == nullptr)
        return FailWith(ERROR_INVALID_PARAMETER);
    const std::size_t size = length < 0 ? std::strlen(bytes) + 1 : static_cast<std::size_t>(length);
    const std::wstring text = page->Decode({bytes, size});
    const int needed = static_cast<int>(text.size());
    if (capacity != 0 && needed > capacity)
        return FailWith(ERROR_INSUFFICIENT_BUFFER);
    if (capacity != 0)
        std::copy(text.begin(), text.end(), out);
    return needed;
}
