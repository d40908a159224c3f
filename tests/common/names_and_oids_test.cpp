// names_and_oids_test.cpp: which names and numbers may stand for something, and messages to the host.
#include <gtest/gtest.h>
#include <libeval/common/name_rule.h>
#include <libeval/common/notification.h>
#include <libeval/common/object_id.h>
#include <support/recording_notifier.h>

namespace {

TEST(NameRule, RefusesTheEmptyName)
{
    EXPECT_FALSE(qel::IsValidName(L""));
}

TEST(NameRule, RefusesExactlyTwentyOfTheFirst128Characters)
{
    std::wstring refused;
    for (wchar_t character = 0; character < 128; ++character) {
        if (!qel::IsValidName(std::wstring(1, character)))
            refused += character;
    }
    EXPECT_EQ(refused, L" #%()*,-./:;<>?@[\\]|");
    EXPECT_EQ(refused.size(), 20u);
}

TEST(NameRule, RefusesACharacterAnywhereInTheName)
{
    for (const wchar_t* name : {L"a-b", L"a b", L"a.b", L"a|b", L" ab", L"ab "})
        EXPECT_FALSE(qel::IsValidName(name)) << name;
}

TEST(NameRule, AcceptsEveryScriptAndLength)
{
    for (const wchar_t* name :
         {L"a_b", L"a+b", L"Gr\u00f6\u00dfe", L"1st", L"\u65e5\u672c", L"a\tb", L"!$&=^~'\"{}`"})
        EXPECT_TRUE(qel::IsValidName(name)) << name;
    EXPECT_TRUE(qel::IsValidName(std::wstring(10000, L'x')));
}

TEST(ObjectId, IsANumberOf32Bits)
{
    EXPECT_TRUE(qel::IsOid(0));
    EXPECT_TRUE(qel::IsOid(4294967295ULL));
    EXPECT_FALSE(qel::IsOid(4294967296ULL));
    EXPECT_FALSE(qel::IsOid(~0ULL));
}

TEST(Notification, CallbackGetsTheMessageAndTheUserValue)
{
    qeltest::CRecordingNotifier notifier;
    EXPECT_TRUE(qel::Notify(&qeltest::CRecordingNotifier::Notify, 44, ePropDBRecordAdded, 7, 8));
    EXPECT_EQ(notifier.Text(), "5(7,8;44)");
}

bool QEL_STDCALL Refuse(EPropDBMessage, unsigned long, unsigned long, unsigned int)
{
    return false;
}

TEST(Notification, AnswerOfTheCallbackIsHandedBack)
{
    EXPECT_FALSE(qel::Notify(&Refuse, 0, ePropDBOpened, 0, 0));
    EXPECT_TRUE(qel::Notify(nullptr, 0, ePropDBOpened, 0, 0));
}

} // namespace
