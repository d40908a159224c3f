// propdb_table_changes_test.cpp: removing and renaming tables.
#include "property_host.h"

using namespace outside;

namespace {

class OutsideTableChanges : public CPropertyHost
{
protected:
    CQelTable::SQelColumn ReferenceTo(unsigned long table,
                                      CQelProperty::EType type = CQelProperty::eReference)
    {
        CQelTable::SQelColumn column = Column(L"Ref", type);
        column.refTable = table;
        return column;
    }
};

TEST_F(OutsideTableChanges, RemovingTellsItsStepsInOrder)
{
    Make(L"Lamps");
    EXPECT_EQ(db.RemoveTable(1), 10001u);
    EXPECT_EQ(Told(), "I3 + Removing table\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 4(1,0)\n");
    EXPECT_FALSE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideTableChanges, RemovingDeletesValuesThenColumnsThenTheRow)
{
    Make(L"Lamps", {Column(L"Power")});
    Make(L"Fans", {Column(L"Speed")});
    Put(1, 1, 1, Number(40));
    Put(2, 1, 2, Number(9));
    Run("CREATE TABLE seen (c);"
        "CREATE TRIGGER a BEFORE DELETE ON qeltpd BEGIN INSERT INTO seen VALUES('value'||old.toid); END;"
        "CREATE TRIGGER b BEFORE DELETE ON qeltpc BEGIN INSERT INTO seen VALUES('column'||old.toid); END;"
        "CREATE TRIGGER c BEFORE DELETE ON qeltpt BEGIN INSERT INTO seen VALUES('table'||old.oid); END");
    EXPECT_EQ(db.RemoveTable(1), 10001u);
    EXPECT_EQ(Ask("SELECT c FROM seen"), "value1 column1 table1");
    EXPECT_EQ(Record(2, 1), "2=9");
}

TEST_F(OutsideTableChanges, UnknownTableGives10020)
{
    EXPECT_EQ(db.RemoveTable(5), 10020u);
    const std::string told = Told();
    EXPECT_EQ(told.substr(0, 29), "I3 + Removing table\nI2 10020\n") << told;
    EXPECT_EQ(db.RemoveTable(0), 10020u);
}

TEST_F(OutsideTableChanges, ColumnThatRefersToItsOwnTableBlocksEveryRemoval)
{
    Make(L"A", {ReferenceTo(1)});
    Make(L"B");
    EXPECT_EQ(db.RemoveTable(2), 17509u);
    EXPECT_EQ(Told(), "I3 + Removing table\nI2 17509\n");
    EXPECT_EQ(db.RemoveTable(1), 17509u);
    EXPECT_EQ(Ask("SELECT tname FROM qeltpt"), "A B");
}

TEST_F(OutsideTableChanges, ColumnThatRefersToAnotherTableBlocksNothing)
{
    Make(L"A", {ReferenceTo(2)});
    Make(L"B");
    EXPECT_EQ(db.RemoveTable(2), 10001u);
    EXPECT_EQ(db.RemoveTable(1), 10001u);
}

TEST_F(OutsideTableChanges, OnlyReferenceColumnsCountForTheGuard)
{
    Make(L"A", {ReferenceTo(1, CQelProperty::eInt)});
    EXPECT_EQ(db.RemoveTable(1), 10001u);
}

TEST_F(OutsideTableChanges, UnknownTableComesBeforeTheGuard)
{
    Make(L"A", {ReferenceTo(1)});
    EXPECT_EQ(db.RemoveTable(77), 10020u);
}

TEST_F(OutsideTableChanges, FailingDeleteUndoesTheEarlierOnesAndKeepsTheCatalogue)
{
    Make(L"Lamps", {Column(L"Power")});
    Put(1, 1, 1, Number(40));
    Run("CREATE TRIGGER no BEFORE DELETE ON qeltpt BEGIN SELECT raise(ABORT,'no'); END");
    EXPECT_EQ(db.RemoveTable(1), 17319u);
    EXPECT_EQ(Told(), "I3 + Removing table\nE 17319\nI3 - Done\n");
    EXPECT_EQ(Record(1, 1), "1=40");
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideTableChanges, RenamingTellsItsStepsInOrder)
{
    Make(L"Lamps");
    EXPECT_EQ(db.RenameTable(1, L"Lights"), 10001u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 3(1,0)\n");
    EXPECT_TRUE(db.TableExists(L"Lights"));
    EXPECT_FALSE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideTableChanges, RenamingToItsOwnNameGives17503)
{
    Make(L"Lamps");
    EXPECT_EQ(db.RenameTable(1, L"Lamps"), 17503u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nI2 17503\n");
}

TEST_F(OutsideTableChanges, DuplicateIsTestedBeforeTheNameRule)
{
    Run("INSERT INTO qeltpt VALUES(3,'a b','')");
    Make(L"Lamps");
    EXPECT_EQ(db.RenameTable(4, L"a b"), 17503u);
    EXPECT_EQ(db.RenameTable(4, L"a c"), 17502u);
    EXPECT_EQ(db.RenameTable(4, L""), 17502u);
    Told();
    EXPECT_EQ(db.RenameTable(99, L"a c"), 17502u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nI2 17502\n");
}

TEST_F(OutsideTableChanges, RenamingAnUnknownTableSucceedsAndNotifies)
{
    EXPECT_EQ(db.RenameTable(55, L"X"), 10001u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nI3 + Loading Tables\nI3 - Done\nI3 - Done\n> 3(55,0)\n");
    EXPECT_FALSE(db.TableExists(L"X"));
}

TEST_F(OutsideTableChanges, FailingRenameIsAnErrorAndChangesNothing)
{
    Make(L"Lamps");
    Run("CREATE TRIGGER no BEFORE UPDATE ON qeltpt BEGIN SELECT raise(ABORT,'no'); END");
    EXPECT_EQ(db.RenameTable(1, L"Lights"), 17319u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nE 17319\nI3 - Done\n");
    EXPECT_TRUE(db.TableExists(L"Lamps"));
}

TEST_F(OutsideTableChanges, MissingSchemaMakesARenameAFault)
{
    Run("DROP TABLE qeltpt");
    EXPECT_EQ(db.RenameTable(1, L"Lights"), 17301u);
    EXPECT_EQ(Told(), "I3 + Renaming Table\nE 17301\nI3 - Done\n");
}

TEST_F(OutsideTableChanges, NeverAttachedObjectWorksOnAnEmptyCatalogue)
{
    Make(L"Lamps");
    CQelPropDB fresh(&sql);
    EXPECT_FALSE(fresh.TableExists(L"Lamps"));
    EXPECT_EQ(fresh.RemoveTable(1), 10020u);
    EXPECT_EQ(fresh.RenameTable(1, L"Lamps"), 10001u) << "its empty catalogue knows no duplicate";
    EXPECT_TRUE(fresh.TableExists(L"Lamps")) << "the change loaded the catalogue";
}

} // namespace
