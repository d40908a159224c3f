// ole_variant_test.cpp: the framework's variant class, its exception, and dates made of variants.
#include "support/environment.h"
#include "support/variant_support.h"

#include <qelplat4/mfc.h>

#include <gtest/gtest.h>

namespace {

using namespace qeltest;

template <class Work>
std::string ThrownBy(Work&& work)
{
    try {
        work();
        return "nothing";
    } catch (CException* exception) {
        auto* const failure = dynamic_cast<COleException*>(exception);
        std::string name = failure != nullptr ? NameOfResult(failure->m_sc) : "another exception";
        EXPECT_FALSE(exception->GetErrorText().empty());
        exception->Delete();
        return name;
    }
}

TEST(OleVariant, HoldsWhatItIsMadeOf)
{
    EXPECT_EQ(ShowVariant(COleVariant()), "VT_EMPTY -");
    EXPECT_EQ(ShowVariant(COleVariant(L"text")), "VT_BSTR \"text\"");
    EXPECT_EQ(ShowVariant(COleVariant(static_cast<const wchar_t*>(nullptr))), "VT_BSTR \"\"");
    EXPECT_EQ(ShowVariant(COleVariant(LONG{5})), "VT_I4 5");
    EXPECT_EQ(ShowVariant(COleVariant(LONG{5}, VT_BOOL)), "VT_BOOL -1");
    EXPECT_EQ(ShowVariant(COleVariant(1.5)), "VT_R8 1.5");
    EXPECT_EQ(ShowVariant(COleVariant(1.5, VT_DATE)), "VT_DATE 1.5");
}

TEST(OleVariant, CopiesAreItsOwn)
{
    COleVariant first(L"first");
    COleVariant second(first);
    first = COleVariant(LONG{1});
    EXPECT_EQ(ShowVariant(second), "VT_BSTR \"first\"");
    first = second;
    second.Clear();
    EXPECT_EQ(ShowVariant(first), "VT_BSTR \"first\"");
    EXPECT_EQ(ShowVariant(second), "VT_EMPTY -");
}

TEST(OleVariant, DetachGivesItUp)
{
    COleVariant value(L"mine");
    const CTestVariant taken(value.Detach());
    EXPECT_EQ(ShowVariant(taken), "VT_BSTR \"mine\"");
    EXPECT_EQ(ShowVariant(value), "VT_EMPTY -");
}

TEST(OleVariant, FailuresAreThrownAndChangeNothing)
{
    const CLocaleEnvironment locale("en_US.UTF-8");
    SKIP_UNLESS_IN_FORCE(locale);
    COleVariant value(L"lamp");
    EXPECT_EQ(ThrownBy([&] { value.ChangeType(VT_I4); }), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ShowVariant(value), "VT_BSTR \"lamp\"");
    const COleVariant number(LONG{70000});
    EXPECT_EQ(ThrownBy([&] { value.ChangeType(VT_I2, &number); }), "DISP_E_OVERFLOW");
    EXPECT_EQ(ThrownBy([&] { value.ChangeType(VT_BSTR, &number); }), "nothing");
    EXPECT_EQ(ShowVariant(value), "VT_BSTR \"70000\"");
}

TEST(OleDateTimeOfVariant, IsTheDateThatTheVariantChangesTo)
{
    const CLocaleEnvironment locale("en_US.UTF-8");
    SKIP_UNLESS_IN_FORCE(locale);
    EXPECT_EQ(COleDateTime(COleVariant(L"3/15/2023")).m_dt, 45000.0);
    EXPECT_EQ(COleDateTime(COleVariant(LONG{60})).m_dt, 60.0);
    EXPECT_EQ(COleDateTime(COleVariant(L"lamp")).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(COleVariant()).GetStatus(), COleDateTime::null);
}

} // namespace
