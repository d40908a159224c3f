// value_table.cpp: prints docs/values.md: how values look and what typed texts become, as the library says.
#include <qelplat4/utf16.h>
#include <qelprop4/qelproperty.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct SColumn
{
    const char* locale;
    const char* title;
};

constexpr SColumn kColumns[] = {{"de_DE.UTF-8", "German (de_DE)"},
                                {"en_US.UTF-8", "US English (en_US)"},
                                {"ja_JP.UTF-8", "Japanese (ja_JP)"}};

void UseLocale(const char* name)
{
    setenv("LC_ALL", name, 1);
}

struct SShown
{
    const char* setter;
    void (*set)(CQelProperty&);
};

constexpr double kMoment = 45000.0 + (17 * 3600 + 5 * 60 + 9) / 86400.0;

constexpr SShown kShown[] = {
    {"`SetNull()`", [](CQelProperty& value) { value.SetNull(); }},
    {"`SetString(L\"1234.5\")`", [](CQelProperty& value) { value.SetString(L"1234.5"); }},
    {"`SetInt(-1234567)`", [](CQelProperty& value) { value.SetInt(-1234567); }},
    {"`SetInt(4000000000U)`", [](CQelProperty& value) { value.SetInt(4000000000U); }},
    {"`SetInt64(-9000000000000LL)`", [](CQelProperty& value) { value.SetInt64(-9000000000000LL); }},
    {"`SetInt64(18446744073709551615ULL)`",
     [](CQelProperty& value) { value.SetInt64(18446744073709551615ULL); }},
    {"`SetDouble(-1234.565)`", [](CQelProperty& value) { value.SetDouble(-1234.565); }},
    {"`SetDate(moment, 60)`", [](CQelProperty& value) { value.SetDate(kMoment, 60); }},
    {"`SetTime(moment, 60)`", [](CQelProperty& value) { value.SetTime(kMoment, 60); }},
    {"`SetDateTime(moment, 60)`", [](CQelProperty& value) { value.SetDateTime(kMoment, 60); }},
    {"`SetBool(true)`", [](CQelProperty& value) { value.SetBool(true); }},
    {"`SetBool(false)`", [](CQelProperty& value) { value.SetBool(false); }},
    {"`SetCurrency(-1234.5, L\"EUR\")`", [](CQelProperty& value) { value.SetCurrency(-1234.5, L"EUR"); }},
    {"`SetCurrency(-1234.5, L\"\")`", [](CQelProperty& value) { value.SetCurrency(-1234.5, L""); }},
    {"`SetURL(L\"https://example.org\")`", [](CQelProperty& value) { value.SetURL(L"https://example.org"); }},
    {"`SetReference(1234)`", [](CQelProperty& value) { value.SetReference(1234); }},
    {"`SetBlob(\"abc\", 3)`", [](CQelProperty& value) { value.SetBlob("abc", 3); }},
};

std::string TypeTitle(const CQelProperty& value)
{
    const std::wstring name = CQelProperty::GetTypeName(value.GetType());
    return name.empty() ? "(date-time: has no name)" : qel::ToUtf8(name);
}

void PrintRow(const std::vector<std::string>& cells)
{
    for (const std::string& cell : cells)
        std::printf("| %s ", cell.c_str());
    std::printf("|\n");
}

void PrintHead(std::vector<std::string> titles)
{
    for (const SColumn& column : kColumns)
        titles.push_back(column.title);
    PrintRow(titles);
    PrintRow(std::vector<std::string>(titles.size(), "---"));
}

void PrintShown()
{
    PrintHead({"Type", "Set by"});
    for (const SShown& shown : kShown) {
        CQelProperty value;
        shown.set(value);
        std::vector<std::string> cells{TypeTitle(value), shown.setter};
        for (const SColumn& column : kColumns) {
            UseLocale(column.locale);
            cells.push_back(value.StringUTF8());
        }
        PrintRow(cells);
    }
}

struct STyped
{
    CQelProperty::EType type;
    const wchar_t* text;
};

constexpr STyped kTyped[] = {
    {CQelProperty::eInt, L"12abc"},        {CQelProperty::eInt, L"1.234"},
    {CQelProperty::eUInt, L"-1"},          {CQelProperty::eDouble, L"1,5"},
    {CQelProperty::eDouble, L"1.5"},       {CQelProperty::eCurrency, L"1.234,5"},
    {CQelProperty::eCurrency, L"1,234.5"}, {CQelProperty::eBool, L"yes"},
    {CQelProperty::eBool, L"maybe"},       {CQelProperty::eDate, L"2023-03-15"},
};

/// The payload after SetValue, as numbers that no locale groups.
std::string Outcome(const STyped& typed)
{
    CQelProperty value;
    if (!value.SetValue(typed.text, typed.type))
        return "refused";
    const bool isAmount = value.GetType() == CQelProperty::eCurrency;
    char text[64];
    std::snprintf(text, sizeof text, "%.15g",
                  isAmount ? static_cast<double>(value.Data().uValue.nCurrency) / 10000.0 : value.Double());
    return text;
}

void PrintTyped()
{
    PrintHead({"Type asked", "Typed"});
    for (const STyped& typed : kTyped) {
        std::vector<std::string> cells{qel::ToUtf8(CQelProperty::GetTypeName(typed.type)),
                                       qel::ToUtf8(typed.text)};
        for (const SColumn& column : kColumns) {
            UseLocale(column.locale);
            cells.push_back(Outcome(typed));
        }
        PrintRow(cells);
    }
}

} // namespace

int main()
{
    std::printf(
        "# Values as people read and type them\n\n"
        "This page is the output of `docs/gen/value_table.cpp`: it shows what the library does. After a "
        "change,\nmake it anew with `cmake --build build/dev --target docs_values`.\n\n"
        "## What `String()` shows\n\n"
        "The moment is 2023-03-15 17:05:09; its bias of 60 minutes is carried and not shown here. A date "
        "before 1601,\nand a number that is infinite or none, show as the empty text.\n\n");
    PrintShown();
    std::printf("\n## What `SetValue()` takes\n\n"
                "Each text is taken by a null value; the cell is the number that it then holds.\n\n");
    PrintTyped();
    return 0;
}
