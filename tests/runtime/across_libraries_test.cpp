// across_libraries_test.cpp: exceptions that leave one library for another, in a host that has others beside
// them.
#include <qelprop4/qelprop4.h>

#include "foreign.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr unsigned int kEndOfFile = 10011;
constexpr unsigned int kBusy = 17305;
constexpr unsigned int kNoTransaction = 17201;

/// The code of the exception that the work has thrown; 0 for none.
template <class Work>
unsigned int CodeThrownBy(Work&& work)
{
    try {
        work();
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        exception->Delete();
        return code;
    }
    return 0;
}

/// A connection whose every text meets another writer.
class CFailingSQLite : public CQelSQLite
{
public:
    int ExecSQL(const wchar_t* sql) override
    {
        CQelSQLite::ExecSQL(sql);
        throw new CQelException(kBusy, 0, L"host.cpp", __LINE__, true);
    }
};

class CFailingLog : public CDovLogfile
{
public:
    bool Write(const SEntry&) override { throw std::runtime_error("no room"); }
};

void ReadPastTheEnd()
{
    CQelMemFile file(true, 0, 16);
    int number = 0;
    file >> number;
}

TEST(AcrossLibraries, OneThrownInALibraryIsCaughtInTheHost)
{
    EXPECT_EQ(CodeThrownBy(ReadPastTheEnd), kEndOfFile);
}

TEST(AcrossLibraries, OneThrownInALibraryPassesThroughAnother)
{
    EXPECT_EQ(CodeThrownBy([] {
                  TavBlob blob;
                  CQelProperty value;
                  blob >> value;
              }),
              kEndOfFile);
}

TEST(AcrossLibraries, OneThrownInALibraryIsCaughtInAnother)
{
    CFailingSQLite sqlite;
    ASSERT_EQ(sqlite.Open(L":memory:"), 0);
    CQelPropDB db(&sqlite);
    EXPECT_EQ(db.Attach(true, nullptr), kNoTransaction);
}

TEST(AcrossLibraries, OneThrownInTheHostIsCaughtInALibrary)
{
    CFailingLog log;
    EXPECT_FALSE(log.AddError(kEndOfFile, __LINE__, L"host.cpp"));
}

TEST(AcrossLibraries, LibraryWithARuntimeOfItsOwnThrowsForItself)
{
    EXPECT_EQ(foreign::ThrownAndCaught(7), 7);
    EXPECT_EQ(CodeThrownBy(ReadPastTheEnd), kEndOfFile);
    EXPECT_EQ(foreign::ThrownAndCaught(8), 8);
}

TEST(AcrossLibraries, OnePassesThroughALibraryWithARuntimeOfItsOwn)
{
    EXPECT_EQ(CodeThrownBy([] { foreign::CallBack(ReadPastTheEnd); }), kEndOfFile);
}

} // namespace
