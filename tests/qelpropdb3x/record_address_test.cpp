// record_address_test.cpp: tables of foreign catalogues whose selectors meet others.
#include "support/hex.h"
#include "support/legacy_database.h"

#include "libeval/qelpropdb3x/record_address.h"

using namespace qeltest;

namespace {

// Tables 1000 and 66536, which keep their records under the same selector; 1000 has two of them.
class LegacySharedSelector : public CLegacyTest
{
protected:
    LegacySharedSelector()
    {
        UseSchema({Make(1000, L"Near")});
        Add(1000, {Int(1), Text(L"a")});
        Add(1000, {Int(2), Text(L"b")});
        UseSchema({Make(1000, L"Near"), Make(66536, L"Far")});
    }
    static CQelTable3X Make(unsigned long oid, const std::wstring& name)
    {
        CQelTable3X table(oid);
        table.Properties().name = name;
        table.Properties().columns = {Column(L"A", CQelProperty::eInt, 0),
                                      Column(L"B", CQelProperty::eString, 1)};
        table.Properties().columns[0].oid = 1;
        table.Properties().columns[1].oid = 2;
        table.Properties().columns[1].displayOrder = 1;
        return table;
    }
    const std::string records = "  2: 1=1 2='a'\n  3: 1=2 2='b'\n";
};

class LegacySchemaSelector : public CLegacyTest
{};

} // namespace

TEST_F(LegacySharedSelector, BothTablesSeeTheRecords)
{
    EXPECT_EQ(Dump(db), "1000 Near: 1 A@0 2 B@1\n" + records + "66536 Far: 1 A@0 2 B@1\n" + records);
    EXPECT_TRUE(db.HasRecord(66536, 2));
}

TEST_F(LegacySharedSelector, StoredRecordsAreNeitherReplacedNorRemoved)
{
    for (const unsigned long table : {1000UL, 66536UL}) {
        unsigned long two = 2;
        EXPECT_THAT(db.SetRecord(table, 2, {}), Gives(17201));
        EXPECT_THAT(db.AddRecord(table, two, {}, true), Gives(17201));
        EXPECT_THAT(db.RemoveRecord(table, 2), Gives(17201));
        EXPECT_THAT(db.TableRemoveColumn(table, 1), Gives(17201));
    }
    EXPECT_EQ(log.ErrorCodes(), (std::vector<unsigned int>(10, 17201)));
    EXPECT_EQ(Dump(db), "1000 Near: 1 A@0 2 B@1\n" + records + "66536 Far: 1 A@0 2 B@1\n" + records);
    EXPECT_EQ(folder.Names(), "legacy.store"); // and no copy is left
}

TEST_F(LegacySharedSelector, NewRecordsGetIdsOfTheirOwn)
{
    EXPECT_EQ(Add(66536, {Int(3)}), 4U);
    EXPECT_EQ(Add(1000, {Int(4)}), 5U);
    EXPECT_THAT(db.SetRecord(66536, 9, {}), Succeeds());
    EXPECT_EQ(Record(1000, 4), "1=3 2=null");
}

TEST_F(LegacySharedSelector, RemovingOneTableLeavesTheRecordsToTheOther)
{
    EXPECT_THAT(db.RemoveTable(66536), Succeeds());
    EXPECT_NE(log.Text().find("W1 Another table has the same records, they are kept\n"), std::string::npos);
    EXPECT_EQ(Dump(db), "1000 Near: 1 A@0 2 B@1\n" + records);
    EXPECT_THAT(db.SetRecord(1000, 2, Values({Int(9), Text(L"c")})), Succeeds());
    EXPECT_THAT(db.RemoveRecord(1000, 3), Succeeds());
}

TEST_F(LegacySharedSelector, TableGoesWithoutALogToo)
{
    db.SetLogfile(nullptr);
    EXPECT_THAT(db.RemoveTable(1000), Succeeds());
    EXPECT_EQ(Dump(db), "66536 Far: 1 A@0 2 B@1\n" + records);
}

TEST_F(LegacySharedSelector, ColumnOfTablesWithoutRecordsGoes)
{
    UseSchema({Make(2000, L"Near"), Make(67536, L"Far")});
    EXPECT_THAT(db.TableRemoveColumn(67536, 1), Succeeds());
    EXPECT_EQ(Show(db), "2000 Near: 1 A@0 2 B@1\n67536 Far: 2 B@0\n");
}

TEST_F(LegacySharedSelector, OidAloneUnderItsSelectorIsATableLikeAnyOther)
{
    UseSchema({Make(66536, L"Far")});
    EXPECT_THAT(db.SetRecord(66536, 2, Values({Int(9)})), Succeeds());
    EXPECT_EQ(StoredHex(db, 1000, 2).substr(0, 8), "02000000");
    EXPECT_THAT(db.RemoveTable(66536), Succeeds());
    EXPECT_EQ(StoredHex(db, 1000, 2), "none");
    EXPECT_EQ(StoredHex(db, 1000, 3), "none");
}

struct SSchemaTable
{
    const char* name;
    unsigned long oid;
    unsigned short selector;
};

class LegacySchemaTable : public CLegacyTest, public testing::WithParamInterface<SSchemaTable>
{
protected:
    LegacySchemaTable()
    {
        CQelTable3X table(GetParam().oid);
        table.Properties().name = L"Odd";
        table.Properties().columns = {Column(L"A", CQelProperty::eInt, 0)};
        table.Properties().columns[0].oid = 1;
        UseSchema({table});
    }
};

TEST_P(LegacySchemaTable, TheSchemaIsNoRecordOfIt)
{
    const unsigned long table = GetParam().oid;
    const std::string schema = StoredHex(db, GetParam().selector, 1);
    unsigned long one = 1;
    EXPECT_THAT(db.SetRecord(table, 1, {}), Gives(10020));
    EXPECT_THAT(db.AddRecord(table, one, {}, true), Gives(10020));
    EXPECT_THAT(db.RemoveRecord(table, 1), Gives(10020));
    EXPECT_FALSE(db.HasRecord(table, 1));
    EXPECT_EQ(Record(table, 1), "code 10020");
    EXPECT_EQ(StoredHex(db, GetParam().selector, 1), schema);
}

TEST_P(LegacySchemaTable, RecordsAndColumnsComeAndGoBesideTheSchema)
{
    const unsigned long table = GetParam().oid;
    EXPECT_EQ(Add(table, {Int(5)}), 2U);
    EXPECT_EQ(Dump(db), std::to_string(table) + " Odd: 1 A@0\n  2: 1=5\n");
    EXPECT_THAT(db.TableRemoveColumn(table, 1), Succeeds());
    EXPECT_EQ(Dump(db), std::to_string(table) + " Odd\n");
    EXPECT_EQ(Add(table, {}), 2U);
    EXPECT_THAT(db.RemoveTable(table), Succeeds());
    EXPECT_EQ(StoredHex(db, GetParam().selector, 2), "none");
    Reopen();
    EXPECT_EQ(Show(db), "");
}

INSTANTIATE_TEST_SUITE_P(Rows, LegacySchemaTable,
                         testing::Values(SSchemaTable{"Two", 2, 2}, SSchemaTable{"Three", 3, 3},
                                         SSchemaTable{"CutToTwo", 65538, 2},
                                         SSchemaTable{"CutToThree", 131075, 3}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LegacySchemaSelector, DamagedRecordOccupiesItsPlace)
{
    StoreBytes(77, 1, "a text of some length");
    db.Close();
    std::string file = ReadFile(folder.File(L"legacy.store"));
    file[file.find("some length")] = 'X';
    WriteFile(folder.File(L"legacy.store"), file);
    Reopen();
    EXPECT_EQ(StoredHex(db, 77, 1), "code 10016");
    EXPECT_THAT(qel::IsOccupied(db.BlobDB(), {77, 1}), Succeeds());
    EXPECT_THAT(qel::IsOccupied(db.BlobDB(), {77, 2}), Gives(10020));
    db.Close();
    EXPECT_THAT(qel::IsOccupied(db.BlobDB(), {77, 1}), Gives(17500));
}

TEST(LegacyAddress, SelectorIsTheLowSixteenBits)
{
    EXPECT_EQ(qel::SelectorOf(1000), 1000);
    EXPECT_EQ(qel::SelectorOf(66536), 1000);
    EXPECT_EQ(qel::SelectorOf(4294967295UL), 65535);
}
