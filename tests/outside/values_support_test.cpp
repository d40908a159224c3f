// values_support_test.cpp: log, tracker, exception, text conversion and bit vector, as hosts use them.
#include "value_host.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <type_traits>
#include <vector>

namespace outside {
namespace {

using namespace qeltest;

/// Keeps every entry as a line: kind, code, level, line, file and text.
class CKeepingLog : public CDovLogfile
{
public:
    bool Write(const SEntry& entry) override
    {
        const char* const kinds = "EWI";
        text += std::string(1, kinds[entry.kind]) + " " + std::to_string(entry.code) + " " +
                std::to_string(entry.level) + " " + std::to_string(entry.line) + " " +
                Text(entry.file).StringUTF8() + (entry.code == 0 ? " " + Text(entry.text).StringUTF8() : "") +
                "\n";
        return true;
    }

    std::string text;
};

constexpr const wchar_t* kFile = L".\\qelpropdb";

TEST(HostLog, TakesEveryKindOfEntry)
{
    CKeepingLog log;
    EXPECT_TRUE(log.AddError(17500u, 1, kFile));
    EXPECT_TRUE(log.AddError(10020u, L"more", 2, kFile));
    EXPECT_TRUE(log.AddError(L"Restoring backup copy of database", 3, kFile));
    EXPECT_TRUE(log.AddWarning(L"careful", 1, 4, kFile));
    EXPECT_TRUE(log.AddInformal(17502u, 2, 5, kFile));
    EXPECT_TRUE(log.AddInformal(L"- Done", 4, 6, kFile));
    EXPECT_EQ(log.text,
              "E 17500 0 1 .\\qelpropdb\nE 10020 0 2 .\\qelpropdb\n"
              "E 0 0 3 .\\qelpropdb Restoring backup copy of database\n"
              "W 0 1 4 .\\qelpropdb careful\nI 17502 2 5 .\\qelpropdb\nI 0 4 6 .\\qelpropdb - Done\n");
}

TEST(HostLog, TakesExceptionsAndLeavesThemAlive)
{
    CKeepingLog log;
    auto* const own = new CQelException(17201, 0, L"file", 12, true);
    EXPECT_TRUE(log.AddError(own, 7, kFile));
    EXPECT_EQ(own->GetCode(), 17201u);
    own->Delete();
    auto* const other = new CException;
    EXPECT_TRUE(log.AddError(other, 8, kFile));
    other->Delete();
    EXPECT_EQ(log.text.substr(0, 28), "E 17201 0 7 .\\qelpropdb\nE 10");
}

TEST(HostLog, WritesUpToLevelFourAtFirst)
{
    CKeepingLog log;
    log.AddInformal(L"four", 4, 1, kFile);
    log.AddInformal(L"five", 5, 1, kFile);
    log.SetLevel(1);
    log.AddWarning(L"one", 1, 1, kFile);
    log.AddInformal(17502u, 2, 1, kFile);
    log.SetLevel(0);
    log.AddError(L"always", 1, kFile);
    EXPECT_EQ(log.text, "I 0 4 1 .\\qelpropdb four\nW 0 1 1 .\\qelpropdb one\nE 0 0 1 .\\qelpropdb always\n");
}

TEST(HostLog, AppendsOneUtf8LinePerEntry)
{
    const auto path = std::filesystem::temp_directory_path() /
                      ("qel-outside-" + std::to_string(std::random_device{}()) + ".log");
    for (int opening = 0; opening < 2; ++opening) {
        CDovLogfile log;
        ASSERT_TRUE(log.Open(path.wstring()));
        EXPECT_TRUE(log.AddError(L"\u20ac\nsecond", 3, kFile));
        EXPECT_TRUE(log.AddError(17500u, 4, kFile));
        log.Close();
        EXPECT_FALSE(log.AddError(17500u, 5, kFile));
    }
    std::stringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    std::filesystem::remove(path);
    const std::string text = content.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
    EXPECT_NE(text.find("\xe2\x82\xac"), std::string::npos);
    EXPECT_NE(text.find("17500"), std::string::npos);
    EXPECT_NE(text.find(".\\qelpropdb"), std::string::npos);
}

TEST(MethodTracker, MarksEntryAndExit)
{
    CKeepingLog log;
    log.SetLevel(5);
    {
        const CDovLogfileMethodTracker tracker(&log, 5, L"CHost::Work", 9, kFile);
        log.AddInformal(L"inside", 3, 10, kFile);
    }
    EXPECT_EQ(log.text, "I 0 5 9 .\\qelpropdb > CHost::Work\nI 0 3 10 .\\qelpropdb inside\n"
                        "I 0 5 9 .\\qelpropdb < CHost::Work\n");
}

TEST(MethodTracker, IsSilentAboveTheLevelAndWithoutALog)
{
    CKeepingLog log;
    {
        const CDovLogfileMethodTracker above(&log, 10, L"CHost::Work", 9, kFile);
        const CDovLogfileMethodTracker without(nullptr, 1, L"CHost::Work", 9, kFile);
    }
    EXPECT_EQ(log.text, "");
}

TEST(HostException, CarriesItsCodeAndPlace)
{
    EXPECT_TRUE((std::is_base_of_v<CException, CQelException>));
    try {
        throw new CQelException(10007, 0, kFile, 321, true);
    } catch (CException* caught) {
        auto* const exception = dynamic_cast<CQelException*>(caught);
        ASSERT_NE(exception, nullptr);
        EXPECT_EQ(exception->GetCode(), 10007u);
        EXPECT_EQ(exception->GetFile(), kFile);
        EXPECT_EQ(exception->GetLine(), 321);
        exception->Delete();
    }
}

struct STextRow
{
    const char* name;
    const wchar_t* wide;
    const char* bytes;
};

class TextConversion : public testing::TestWithParam<STextRow>
{};

TEST_P(TextConversion, GoesBothWays)
{
    const TavCharConvert convert;
    EXPECT_EQ(convert.ToUTF8(GetParam().wide), GetParam().bytes);
    EXPECT_EQ(convert.UTF8ToUnicode(GetParam().bytes), GetParam().wide);
}

INSTANTIATE_TEST_SUITE_P(Texts, TextConversion,
                         testing::Values(STextRow{"Empty", L"", ""}, STextRow{"Ascii", L"abc", "abc"},
                                         STextRow{"TwoBytes", L"\u00e4", "\xc3\xa4"},
                                         STextRow{"ThreeBytes", L"\u20ac", "\xe2\x82\xac"},
                                         STextRow{"FourBytes", L"\U0001F600", "\xf0\x9f\x98\x80"}),
                         SRowName());

struct SFloatRow
{
    const char* name;
    const wchar_t* text;
    double number;
};

class TextToFloat : public testing::TestWithParam<SFloatRow>
{};

TEST_P(TextToFloat, ReadsADecimalTextWhateverTheLocale)
{
    for (const char* name : {"de_DE.UTF-8", "en_US.UTF-8", "C"}) {
        const CLocaleEnvironment locale(name);
        EXPECT_EQ(TavCharConvert::StringToFloat(GetParam().text), GetParam().number);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, TextToFloat,
                         testing::Values(SFloatRow{"Whole", L"12", 12}, SFloatRow{"Point", L"1234.5", 1234.5},
                                         SFloatRow{"Comma", L"1234,5", 1234.5},
                                         SFloatRow{"Minus", L"-0.1", -0.1}, SFloatRow{"Plus", L"+2", 2},
                                         SFloatRow{"Empty", L"", 0}, SFloatRow{"Letters", L"abc", 0},
                                         SFloatRow{"SignAlone", L"-", 0},
                                         SFloatRow{"SignInside", L"12-3", 12}),
                         SRowName());

TEST(BitVector, GrowsByItsStepAndHoldsWhatWasSet)
{
    CBitVector bits;
    EXPECT_EQ(bits.Size(), 0u);
    EXPECT_FALSE(bits.Test(0));
    bits.Set(0, 32);
    EXPECT_EQ(bits.Size(), 32u);
    bits.Set(31, 32);
    EXPECT_EQ(bits.Size(), 32u);
    bits.Set(32, 32);
    EXPECT_EQ(bits.Size(), 64u);
    EXPECT_TRUE(bits.Test(0) && bits.Test(31) && bits.Test(32));
    EXPECT_FALSE(bits.Test(1) || bits.Test(33) || bits.Test(64) || bits.Test(4294967295u));
    bits.Clear();
    EXPECT_EQ(bits.Size(), 0u);
    EXPECT_FALSE(bits.Test(0));
}

TEST(BitVector, TakesStoredWordsLowestBitFirst)
{
    CBitVector bits;
    bits.Set(100, 32);
    bits = std::vector<unsigned long>{0x00000005ul, 0x80000000ul};
    EXPECT_EQ(bits.Size(), 64u);
    EXPECT_TRUE(bits.Test(0) && bits.Test(2) && bits.Test(63));
    EXPECT_FALSE(bits.Test(1) || bits.Test(3) || bits.Test(62) || bits.Test(100));
}

TEST(BitVector, CopyIsItsOwn)
{
    CBitVector bits;
    bits.Set(5, 32);
    CBitVector copy(bits);
    bits.Set(6, 32);
    EXPECT_TRUE(copy.Test(5));
    EXPECT_FALSE(copy.Test(6));
}

TEST(BitVector, HighestIdCostsLittle)
{
    CBitVector bits;
    bits.Set(4294967295u, 32);
    EXPECT_TRUE(bits.Test(4294967295u));
    EXPECT_FALSE(bits.Test(4294967294u));
}

} // namespace
} // namespace outside
