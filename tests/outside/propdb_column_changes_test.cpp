// propdb_column_changes_test.cpp: modifying, renaming and swapping columns.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideColumnChanges : public CPropertyHost
{
protected:
    OutsideColumnChanges()
    {
        Make(L"Lamps",
             {Column(L"Power", CQelProperty::eDouble, 4), Column(L"Maker", CQelProperty::eString, 7)});
    }

    CQelTable::SQelColumn Stored(unsigned long oid)
    {
        CQelTable::SQelColumn column;
        EXPECT_EQ(db.TableGetColumn(1, oid, column), 10001u);
        Told();
        return column;
    }
};

TEST_F(OutsideColumnChanges, ModifyingLoadsTheCatalogueTwiceInARow)
{
    CQelTable::SQelColumn column = Stored(1);
    EXPECT_EQ(db.TableModifyColumn(1, column), 10001u);
    EXPECT_EQ(Told(), "I3 + Updating Column\nI3 + Loading Tables\nI3 - Done\nI3 + Loading Tables\nI3 - Done\n"
                      "I3 - Done\n> 3(1,0)\n");
}

TEST_F(OutsideColumnChanges, ModifyingReplacesEveryFieldButTheOids)
{
    CQelTable::SQelColumn column = Column(L"Watts", CQelProperty::eInt, 9999);
    column.oid = 1;
    column.description = L"d";
    column.refTable = 4;
    column.refColumn = 5;
    column.displayHint = 6;
    column.format = L"f";
    column.currency = L"c";
    column.defaultValue = Number(60);
    EXPECT_EQ(db.TableModifyColumn(1, column), 10001u);
    EXPECT_EQ(Ask("SELECT oid,toid,ctype,cname,cdesc,crtt,crtc,hex(cdef),cdisph,cformat,ccur,cdo FROM qeltpc "
                  "WHERE oid=1"),
              "1|1|2|Watts|d|4|5|0400"
              "02000000"
              "00000000"
              "00000000"
              "00000000"
              "3C00000000000000"
              "|6|f|c|9999");
}

TEST_F(OutsideColumnChanges, ModifyingTestsNoName)
{
    CQelTable::SQelColumn column = Stored(1);
    for (const wchar_t* name : {L"a b", L"", L"Maker"}) {
        column.name = name;
        EXPECT_EQ(db.TableModifyColumn(1, column), 10001u);
        EXPECT_EQ(Stored(1).name, name);
    }
}

TEST_F(OutsideColumnChanges, UnknownTableOrColumnGives10020)
{
    CQelTable::SQelColumn column = Stored(1);
    EXPECT_EQ(db.TableModifyColumn(9, column), 10020u);
    EXPECT_EQ(Told(), "I3 + Updating Column\nI2 10020\n");
    column.oid = 99;
    EXPECT_EQ(db.TableModifyColumn(1, column), 10020u);
    EXPECT_EQ(Told().substr(0, 22), "I3 + Updating Column\nI");
}

TEST_F(OutsideColumnChanges, TypeChangesOnlyWhileTheTableHoldsNoRecords)
{
    CQelTable::SQelColumn column = Stored(1);
    column.type = CQelProperty::eString;
    Put(1, 5, 2, Text(L"a value of the other column counts"));
    EXPECT_EQ(db.TableModifyColumn(1, column), 17506u);
    const std::string told = Told();
    EXPECT_NE(told.find("I2 17506\n"), std::string::npos) << told;
    EXPECT_EQ(Stored(1).type, CQelProperty::eDouble);
    ASSERT_EQ(db.RemoveRecord(1, 5), 10001u);
    EXPECT_EQ(db.TableModifyColumn(1, column), 10001u);
    EXPECT_EQ(Stored(1).type, CQelProperty::eString);
}

TEST_F(OutsideColumnChanges, OtherFieldsChangeWhileThereAreRecordsAndValuesStay)
{
    Put(1, 5, 1, Number(3));
    CQelTable::SQelColumn column = Stored(1);
    column.name = L"Watts";
    EXPECT_EQ(db.TableModifyColumn(1, column), 10001u);
    EXPECT_EQ(Record(1, 5), "1=3 2=null");
}

TEST_F(OutsideColumnChanges, FailingModificationChangesNothing)
{
    Run("CREATE TRIGGER no BEFORE UPDATE ON qeltpc BEGIN SELECT raise(ABORT,'no'); END");
    CQelTable::SQelColumn column = Stored(1);
    column.name = L"Watts";
    EXPECT_EQ(db.TableModifyColumn(1, column), 17319u);
    EXPECT_EQ(Told(), "I3 + Updating Column\nE 17319\nI3 - Done\n");
    EXPECT_EQ(Stored(1).name, L"Power");
}

TEST_F(OutsideColumnChanges, RenamingTellsItsStepsInOrder)
{
    EXPECT_EQ(db.RenameColumn(1, 1, L"Watts"), 10001u);
    EXPECT_EQ(Told(), "I3 + Renaming Column\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 3(1,0)\n");
    EXPECT_EQ(Columns(1), "1:Watts@4 2:Maker@7");
}

struct SRename
{
    const char* name;
    unsigned long table;
    unsigned long column;
    std::wstring to;
    unsigned int code;
};

class OutsideRenames : public OutsideColumnChanges, public testing::WithParamInterface<SRename>
{};

TEST_P(OutsideRenames, AreRefusedInTheirOrderAsInformalEntries)
{
    EXPECT_EQ(db.RenameColumn(GetParam().table, GetParam().column, GetParam().to), GetParam().code);
    EXPECT_EQ(Told(), "I3 + Renaming Column\nI2 " + std::to_string(GetParam().code) + "\n");
    EXPECT_EQ(Columns(1), "1:Power@4 2:Maker@7");
}

INSTANTIATE_TEST_SUITE_P(Rows, OutsideRenames,
                         testing::Values(SRename{"InvalidBeforeUnknownTable", 9, 1, L"a b", 17502},
                                         SRename{"UnknownTable", 9, 1, L"Watts", 10020},
                                         SRename{"OwnName", 1, 1, L"Power", 17503},
                                         SRename{"NameOfAnother", 1, 1, L"Maker", 17503},
                                         SRename{"UsedBeforeUnknownColumn", 1, 99, L"Maker", 17503},
                                         SRename{"UnknownColumn", 1, 99, L"Watts", 10020}),
                         [](const testing::TestParamInfo<SRename>& row) { return row.param.name; });

TEST_F(OutsideColumnChanges, SwappingExchangesTheTwoOrders)
{
    EXPECT_EQ(db.TableSwapDisplayOrder(1, 1, 2), 10001u);
    EXPECT_EQ(Told(), "I3 + TableSwapDisplayOrder\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 3(1,0)\n");
    EXPECT_EQ(Columns(1), "1:Power@7 2:Maker@4");
    EXPECT_EQ(db.TableSwapDisplayOrder(1, 2, 1), 10001u);
    EXPECT_EQ(Columns(1), "1:Power@4 2:Maker@7");
}

TEST_F(OutsideColumnChanges, SwappingNeedsTwoColumnsOfAKnownTable)
{
    const std::vector<std::vector<unsigned long>> refused = {{9, 1, 2}, {1, 1, 1}, {1, 1, 9}, {1, 9, 1}};
    for (const auto& oids : refused) {
        EXPECT_EQ(db.TableSwapDisplayOrder(oids[0], oids[1], oids[2]), 10020u);
        const std::string told = Told();
        EXPECT_EQ(told.find("> "), std::string::npos);
        EXPECT_EQ(told.substr(0, 36), "I3 + TableSwapDisplayOrder\nI2 10020\n") << told;
    }
    EXPECT_EQ(Columns(1), "1:Power@4 2:Maker@7");
}

TEST_F(OutsideColumnChanges, FailingSecondHalfOfASwapUndoesTheFirst)
{
    Run("CREATE TRIGGER no BEFORE UPDATE ON qeltpc WHEN new.oid=2 BEGIN SELECT raise(ABORT,'no'); END");
    EXPECT_EQ(db.TableSwapDisplayOrder(1, 1, 2), 17319u);
    EXPECT_EQ(Told(), "I3 + TableSwapDisplayOrder\nE 17319\nI3 - Done\n");
    EXPECT_EQ(Ask("SELECT cdo FROM qeltpc ORDER BY oid"), "4 7");
}

TEST_F(OutsideColumnChanges, RenamingAColumnNeedsItInThatTable)
{
    Make(L"Fans", {Column(L"Speed")});
    EXPECT_EQ(db.RenameColumn(1, 3, L"X"), 10020u);
    EXPECT_EQ(db.TableSwapDisplayOrder(1, 1, 3), 10020u);
    CQelTable::SQelColumn column = Stored(1);
    column.oid = 3;
    EXPECT_EQ(db.TableModifyColumn(1, column), 10020u);
}

} // namespace
