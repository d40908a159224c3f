// damage_test.cpp: stored bytes that are not what was written.
#include "lamps.h"

#include <support/hex.h>

namespace {

using namespace qeltest;

using Damage = Lamps;

// The stored form of 'red': 26 bytes before the text, whose size stands in the bytes 10 to 13.
constexpr std::size_t kStoredSize = 34;

std::string Hex(const std::string& bytes)
{
    return "x'" + HexOf(bytes) + "'";
}

TEST_F(Damage, CutValueIsACodeAndALogEntry)
{
    AddLamp(40, L"red");
    SQelPropColumnData data;
    for (std::size_t size = 0; size < kStoredSize; ++size) {
        ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=substr(data,1," + std::to_string(size) +
                                     ") WHERE coid=2 AND foid=1"));
        log.Forget();
        EXPECT_EQ(Record(lamps, 1), "10011") << size;
        EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>{10011});
        EXPECT_THAT(db.GetColumn(lamps, 1, 1, data), Gives(10011));
        ASSERT_THAT(db.SetRecord(lamps, 1, {Value(2, Text(L"red"))}), Succeeds());
    }
    EXPECT_EQ(Record(lamps, 1), "1=40 2='red'");
}

TEST_F(Damage, FlippedByteIsACodeOrAValue)
{
    AddLamp(40, L"red");
    const std::string good = BytesOf("04000100000000000000080000000000000000000000000000007200650064000000");
    ASSERT_EQ(Rows(sql, "SELECT length(data) FROM qeltpd WHERE coid=2"), "34\n");
    const std::vector<CQelPropDB::SSortItem> sort = {{2, true}};
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (const int flip : {1, 0x80, 0xFF}) {
            std::string bad = good;
            bad[at] = static_cast<char>(bad[at] ^ flip);
            ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=" + Hex(bad) + " WHERE coid=2"));
            TRecord record;
            TOids oids;
            const unsigned int code = db.GetRecord(lamps, 1, record);
            EXPECT_TRUE(code == 10001 || code == 10011) << at;
            EXPECT_EQ(db.GetRecordOids(lamps, oids, &sort), code);
            EXPECT_EQ(oids.size(), code == 10001 ? 1u : 0u);
        }
    }
}

TEST_F(Damage, SizeThatTheBytesCannotFillTakesNoMemory)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(
        Execute(sql, "UPDATE qeltpd SET data=x'04000d00000000000000ffffffff000000000000000000000000'"));
    EXPECT_EQ(Record(lamps, 1), "10011");
}

TEST_F(Damage, TextAndNumbersInThePlaceOfBytesAreACode)
{
    AddLamp(40, L"red");
    for (const char* value : {"'text'", "''", "17", "1.5", "zeroblob(0)"}) {
        ASSERT_TRUE(Execute(sql, std::string("UPDATE qeltpd SET data=") + value + " WHERE coid=2"));
        EXPECT_EQ(Record(lamps, 1), "10011") << value;
    }
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=NULL WHERE coid=2"));
    EXPECT_EQ(Record(lamps, 1), "1=40 2=-");
}

TEST_F(Damage, RecordReadAfterADamagedOneIsWhole)
{
    AddLamp(40, L"red");
    AddLamp(60, L"blue");
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=x'04' WHERE foid=1 AND coid=2"));
    TRecord record;
    EXPECT_THAT(db.GetRecord(lamps, 1, record), Gives(10011));
    EXPECT_THAT(db.GetRecord(lamps, 2, record), Succeeds());
    EXPECT_EQ(Show(record[0].value) + Show(record[1].value), "60'blue'");
}

TEST_F(Damage, DamagedRecordCanBeReplacedAndRemoved)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=x'04'"));
    EXPECT_TRUE(db.HasRecord(lamps, 1));
    EXPECT_THAT(db.SetRecord(lamps, 1, {Value(1, Int(1)), Value(2, Int(2))}), Succeeds());
    EXPECT_EQ(Record(lamps, 1), "1=1 2=2");
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=x'04'"));
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Succeeds());
}

TEST_F(Damage, BulkCacheStaysEmptyRatherThanPartlyFilled)
{
    Add(TableOf(L"Bulk", {Column(L"a")}, 1000));
    for (int i = 0; i < 3; ++i)
        Add(1000, {Value(3, Int(i))});
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpd SET data=x'04' WHERE foid=3"));
    EXPECT_TRUE(db.GetBulkRecords().empty());
    EXPECT_EQ(log.ErrorCodes(), std::vector<unsigned int>{10011});
    ASSERT_TRUE(Execute(sql, "DELETE FROM qeltpd WHERE foid=3"));
    EXPECT_EQ(db.GetBulkRecords().size(), 2u) << "the next call tries again";
}

TEST_F(Damage, NullThatClaimsABufferStaysHarmlessInBulk)
{
    Add(TableOf(L"Bulk", {Column(L"a")}, 1000));
    Add(1000, {Value(3, Int(1))});
    ASSERT_TRUE(
        Execute(sql, "UPDATE qeltpd SET data=x'0400000000000000000000ffff00000000000000000000000000'"));
    const TRecord copy = db.GetBulkRecords().at(1);
    EXPECT_EQ(copy.at(0).value.GetType(), CQelProperty::eString);
    EXPECT_EQ(copy[0].value.Data().pBuffer, nullptr);
}

TEST_F(Damage, DamagedDefaultValueIsACodeThatCostsNoTable)
{
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpc SET cdef=x'0400' WHERE oid=1"));
    EXPECT_THAT(db.Attach(false, nullptr), Gives(10011));
    EXPECT_EQ(log.ErrorCodes(), (std::vector<unsigned int>{10011, 10011})) << "loaded twice, for a repair";
    EXPECT_EQ(notifier.Text(), "0(0,0)");
    EXPECT_EQ(DumpDefinitions(db), "1 Lamps\n  1 Power type 2\n  2 Colour type 1 order 1\n");
}

TEST_F(Damage, DamagedDefaultValueCanBeRepaired)
{
    ASSERT_TRUE(Execute(sql, "UPDATE qeltpc SET cdef='x' WHERE oid=1"));
    EXPECT_THAT(db.Attach(false, nullptr), Gives(10011));
    CQelTable::SQelColumn column;
    EXPECT_THAT(db.RenameTable(lamps, L"Bulbs"), Succeeds()) << "other changes go on";
    ASSERT_THAT(db.TableGetColumn(lamps, 1, column), Succeeds());
    EXPECT_THAT(db.TableModifyColumn(lamps, column), Succeeds());
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
}

TEST_F(Damage, EveryByteOfADefaultValueMayBeAnything)
{
    for (int at = 0; at < 26; ++at) {
        std::string bad = BytesOf("0400020000000000000000000000000000002800000000000000");
        bad[static_cast<std::size_t>(at)] = static_cast<char>(bad[static_cast<std::size_t>(at)] ^ 0xFF);
        ASSERT_TRUE(Execute(sql, "UPDATE qeltpc SET cdef=" + Hex(bad) + " WHERE oid=1"));
        const unsigned int code = db.Attach(false, nullptr);
        EXPECT_TRUE(code == 10001 || code == 10011) << at;
        EXPECT_TRUE(db.TableExists(L"Lamps"));
    }
}

TEST_F(Damage, SchemaOfAnotherShapeOpensWithoutTables)
{
    ASSERT_TRUE(Execute(sql, "DROP TABLE qeltpt; CREATE TABLE qeltpt(a)"));
    EXPECT_THAT(db.Attach(false, nullptr), Succeeds());
    EXPECT_EQ(DumpDefinitions(db), "");
}

TEST_F(Damage, TableOfValuesThatIsGoneReadsAsNothingStored)
{
    AddLamp(40, L"red");
    ASSERT_TRUE(Execute(sql, "DROP TABLE qeltpd"));
    unsigned long oid = 0;
    unsigned int count = 9;
    EXPECT_EQ(Record(lamps, 1), "1=- 2=-");
    EXPECT_FALSE(db.HasRecord(lamps, 1));
    EXPECT_THAT(db.GetRecordCount(lamps, count), Succeeds());
    EXPECT_EQ(count, 0u);
    EXPECT_THAT(db.AddRecord(lamps, oid, {Value(1, Int(1))}, false), Gives(17301));
    EXPECT_THAT(db.RemoveRecord(lamps, 1), Gives(17301));
}

TEST_F(Damage, FileThatIsNoDatabaseIsACode)
{
    CTemporaryFolder folder;
    WriteFile(folder.File(L"x.db"), std::string(5000, 'x'));
    CQelSQLite garbage;
    garbage.Open(folder.Path(L"x.db"));
    CQelPropDB other(&garbage);
    EXPECT_THAT(other.Attach(false, nullptr), Gives(17326));
    EXPECT_THAT(other.Attach(true, nullptr), Gives(17201));
}

} // namespace
