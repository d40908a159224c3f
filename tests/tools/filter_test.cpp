// filter_test.cpp: records chosen by --where and --where-null, on both kinds of file.
#include "program_run.h"

namespace qeltest {
namespace {

class Filter : public BothKinds
{};

TEST_P(Filter, TakesTheRecordsThatHoldTheValue)
{
    EXPECT_EQ(Out("list cars.db Cars --where Maker=@2 --columns Model -o plain"), "96\nSonett\n");
    EXPECT_EQ(Out("list cars.db Cars --where Price=5400 --columns Model -o plain"), "Sonett\n");
    EXPECT_EQ(Out("list cars.db Cars --where Model=Nobody --columns Model -o plain"), "");
}

TEST_P(Filter, WantsEveryCondition)
{
    EXPECT_EQ(Out("count cars.db Cars --where Maker=@2"), "2\n");
    EXPECT_EQ(Out("count cars.db Cars --where Maker=@2 --where Fast=true"), "1\n");
    EXPECT_EQ(Out("count cars.db Cars --where Maker=@2 --where-null Price"), "0\n");
}

TEST_P(Filter, TellsNullFromTheEmptyText)
{
    Out("add cars.db Makers --oid 10 Name=");
    Out("add cars.db Makers --oid 11 Country=Italy");
    EXPECT_EQ(Out("list cars.db Makers --where Name= --columns @oid -o plain"), "10\n");
    EXPECT_EQ(Out("list cars.db Makers --where-null Name --columns @oid -o plain"), "11\n");
    EXPECT_EQ(Out("list cars.db Cars --where Price=null --columns @oid -o plain"), "7\n");
}

TEST_P(Filter, ComesBeforeSortAndPage)
{
    EXPECT_EQ(Out("list cars.db Cars --where Maker=@2 --sort Price:desc --limit 1 --columns Model -o plain"),
              "Sonett\n");
}

TEST_P(Filter, ChoosesWhatIsExported)
{
    EXPECT_EQ(Out("export cars.db Cars --where-null Price --columns @oid,Model"), "@oid,Model\n7,Duett\n");
}

TEST_P(Filter, RefusesWhatNoRecordCouldHold)
{
    EXPECT_EQ(Refusal("list cars.db Cars --where Nope=1"),
              "3 qelprop: cars.db: no column 'Nope' in table 'Cars' (10020)");
    EXPECT_EQ(Refusal("count cars.db Cars --where-null Nope"),
              "3 qelprop: cars.db: no column 'Nope' in table 'Cars' (10020)");
    EXPECT_EQ(Run("count cars.db Cars --where Fast=perhaps").exit, 4);
    EXPECT_EQ(Run("count cars.db Cars --where Fast").exit, 2);
}

INSTANTIATE_TEST_SUITE_P(Kinds, Filter, testing::Values("sqlite", "legacy"), KindName);

} // namespace
} // namespace qeltest
