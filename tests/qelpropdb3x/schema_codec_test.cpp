// schema_codec_test.cpp: the bytes of the table schema record.
#include "support/hex.h"
#include "support/legacy_database.h"

#include "libeval/qelpropdb3x/schema_codec.h"

#include <limits>

using namespace qeltest;

namespace {

CQelTable3X Lamps()
{
    CQelTable3X table(1000);
    table.Properties().name = L"L";
    SLegacyColumn power = Column(L"P", CQelProperty::eInt, 0);
    power.oid = 1;
    table.Properties().columns = {power};
    return table;
}

// One of everything: two tables, columns out of id order, each field different from its default.
qel::TLegacyTables Everything()
{
    SLegacyColumn maker = Column(L"Maker", CQelProperty::eReference, 1);
    maker.oid = 2;
    maker.description = L"who";
    maker.refTable = 1001;
    maker.refColumn = 7;
    maker.displayOrder = 0;
    SLegacyColumn price = Column(L"Price", CQelProperty::eCurrency, 0);
    price.oid = 1;
    price.defaultValue = Text(L"ten");
    price.displayHint = 3;
    price.format = L"%d";
    price.currency = L"EUR";
    price.displayOrder = 1;
    CQelTable3X cars(1000);
    cars.Properties().name = L"Cars";
    cars.Properties().description = L"all of them";
    cars.Properties().flag = true;
    cars.Properties().columns = {maker, price};
    CQelTable3X makers(1001);
    makers.Properties().name = L"Makers";
    return {{1000, cars}, {1001, makers}};
}

std::string SchemaBytes(const qel::TLegacyTables& tables)
{
    CQelMemFile file(false, 65536, 4096);
    qel::WriteSchema(file, tables);
    return BytesOf(HexOf(file));
}

// What reading gives: 0 for a wrong checksum, 10001, or the code that was thrown.
unsigned int ReadCode(const std::string& bytes, qel::TLegacyTables& tables)
{
    CQelMemFile file(false, 65536, 4096);
    file.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
    file.Rewind();
    bool matches = false;
    const unsigned int code = CodeThrownBy([&] { matches = qel::ReadSchema(file, tables); });
    return code != 0 ? code : matches ? qel::kSuccess : qel::kChecksumMismatch;
}

// A table entry of any version, written as that version was: name "T", columns 3, 5 and 8.
void WriteOldTable(CQelFile& file, unsigned short version, const std::vector<int>& orders,
                   const std::vector<int>& slots)
{
    file << version << 1000UL << std::wstring(L"T") << std::wstring() << 3U;
    const unsigned long oids[] = {3, 5, 8};
    for (std::size_t i = 0; i < 3; ++i) {
        file << oids[i] << 1 << std::wstring(1, static_cast<wchar_t>(L'a' + i)) << std::wstring() << 0UL
             << 0UL << CQelProperty() << 1U << std::wstring() << std::wstring();
        if (version >= 3)
            file << orders[i];
        if (version >= 4)
            file << slots[i];
    }
    if (version >= 2)
        file << true;
}

std::string ReadOldTable(unsigned short version, const std::vector<int>& orders,
                         const std::vector<int>& slots)
{
    CQelMemFile file(false, 4096, 4096);
    WriteOldTable(file, version, orders, slots);
    file.Rewind();
    CQelTable3X table;
    table.Properties().flag = true;
    qel::ReadTable(file, table);
    EXPECT_EQ(file.BytesRemaining(), 0U);
    std::string text = Show(table).substr(8);
    for (const SLegacyColumn& column : table.Columns())
        text += std::to_string(column.displayOrder);
    return text + (table.Properties().flag ? " flag" : "");
}

} // namespace

TEST(LegacySchema, EmptySchemaIsTenBytes)
{
    EXPECT_EQ(HexOf(SchemaBytes({}), "2 4 4"), "0100 00000000 06729e7a");
}

TEST(LegacySchema, TableWithOneColumnByteByByte)
{
    EXPECT_EQ(HexOf(SchemaBytes({{1000, Lamps()}})),
              "0100"                                                 // schema version
              "01000000"                                             // tables
              "0400"                                                 // entry version
              "e8030000"                                             // table oid
              "010000004c00"                                         // name
              "00000000"                                             // description
              "01000000"                                             // columns
              "01000000"                                             // column oid
              "02000000"                                             // type
              "010000005000"                                         // name
              "00000000"                                             // description
              "00000000"                                             // refTable
              "00000000"                                             // refColumn
              "0400000000000000000000000000000000000000000000000000" // default value
              "01000000"                                             // display hint
              "00000000"                                             // format
              "00000000"                                             // currency
              "00000000"                                             // display order
              "00000000"                                             // slot
              "00"                                                   // flag
              "bbd8d3a6");
}

TEST(LegacySchema, EveryFieldComesBack)
{
    qel::TLegacyTables read;
    ASSERT_EQ(ReadCode(SchemaBytes(Everything()), read), qel::kSuccess);
    EXPECT_EQ(SchemaBytes(read), SchemaBytes(Everything()));
    const SLegacyColumn& price = read[1000].Columns()[1];
    EXPECT_EQ(price.format, L"%d");
    EXPECT_EQ(price.currency, L"EUR");
    EXPECT_EQ(price.displayHint, 3U);
    EXPECT_EQ(price.defaultValue, Text(L"ten"));
    EXPECT_EQ(read[1000].Columns()[0].refTable, 1001U);
    EXPECT_EQ(read[1000].Columns()[0].refColumn, 7U);
    EXPECT_TRUE(read[1000].Properties().flag);
    EXPECT_FALSE(read[1001].Properties().flag);
}

TEST(LegacySchema, ColumnsAreStoredInOrderOfUnsignedOid)
{
    CQelTable3X table(1000);
    for (const unsigned long oid : {4000000000UL, 2UL, 70000UL}) {
        table.Properties().columns.push_back(Column(L"c"));
        table.Properties().columns.back().oid = oid;
    }
    CQelMemFile file(false, 4096, 4096);
    qel::WriteTable(file, table);
    const std::string bytes = HexOf(file);
    const std::size_t second = bytes.find("70110100");
    EXPECT_LT(bytes.find("0200000001000000"), second);
    EXPECT_LT(second, bytes.find("00286bee"));
    EXPECT_EQ(table.Columns()[0].oid, 4000000000UL); // the table's own order stays
}

TEST(LegacySchema, OidWiderThanThirtyTwoBitsIsRefused)
{
    if (sizeof(unsigned long) == 4)
        GTEST_SKIP() << "no such number here";
    qel::TLegacyTables tables{{1000, Lamps()}};
    tables[1000].Properties().columns[0].refTable = static_cast<unsigned long>(0x100000000ULL);
    CQelMemFile file(false, 4096, 4096);
    EXPECT_EQ(CodeThrownBy([&] { qel::WriteSchema(file, tables); }), qel::kNotFound);
}

struct SOldEntry
{
    const char* name;
    unsigned short version;
    std::vector<int> orders;
    std::vector<int> slots;
    const char* table; // columns as they stand in memory, display orders, flag
};

class LegacyEntryVersion : public testing::TestWithParam<SOldEntry>
{};

TEST_P(LegacyEntryVersion, IsReadByItsRules)
{
    const SOldEntry& row = GetParam();
    EXPECT_EQ(ReadOldTable(row.version, row.orders, row.slots), row.table);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LegacyEntryVersion,
    testing::Values(
        SOldEntry{"Zero", 0, {}, {}, "3 a@0 5 b@1 8 c@2\n012"},
        SOldEntry{"One", 1, {}, {}, "3 a@0 5 b@1 8 c@2\n012"},
        SOldEntry{"Two", 2, {}, {}, "3 a@0 5 b@1 8 c@2\n012 flag"},
        SOldEntry{"Three", 3, {5, 2, 9}, {}, "5 b@1 3 a@0 8 c@2\n012 flag"},
        SOldEntry{"ThreeWithNegativeOrder", 3, {5, -1, 9}, {}, "5 b@1 3 a@0 8 c@2\n012 flag"},
        SOldEntry{"Four", 4, {5, 2, 9}, {2, 0, 1}, "5 b@0 3 a@2 8 c@1\n012 flag"},
        SOldEntry{
            "FourWithNegativeSlot", 4, {0, 1, 2}, {7, -1, -2147483647 - 1}, "3 a@7 5 b@1 8 c@2\n012 flag"},
        SOldEntry{"FourWithEqualOrders", 4, {0, 0, 0}, {0, 0, 0}, "3 a@0 5 b@0 8 c@0\n012 flag"},
        SOldEntry{"FourWithLargestNumbers",
                  4,
                  {2147483647, 0, 1},
                  {2147483647, 0, 1},
                  "5 b@0 8 c@1 3 a@2147483647\n012 flag"},
        SOldEntry{"Newer", 5, {2, 1, 0}, {0, 1, 2}, "8 c@2 5 b@1 3 a@0\n012 flag"},
        SOldEntry{"Largest", 65535, {2, 1, 0}, {0, 1, 2}, "8 c@2 5 b@1 3 a@0\n012 flag"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(LegacySchema, SchemaVersionIsNotLookedAt)
{
    CQelMemFile file(false, 4096, 4096);
    file.BeginCheckSum();
    file << static_cast<unsigned short>(77) << 0U;
    file.WriteCheckSum();
    qel::TLegacyTables tables;
    EXPECT_EQ(ReadCode(BytesOf(HexOf(file)), tables), qel::kSuccess);
}

TEST(LegacySchema, FirstOfTwoEntriesWithOneOidIsKept)
{
    CQelMemFile file(false, 4096, 4096);
    file.BeginCheckSum();
    file << static_cast<unsigned short>(1) << 2U;
    CQelTable3X second = Lamps();
    second.Properties().name = L"second";
    qel::WriteTable(file, Lamps());
    qel::WriteTable(file, second);
    file.WriteCheckSum();
    qel::TLegacyTables tables;
    ASSERT_EQ(ReadCode(BytesOf(HexOf(file)), tables), qel::kSuccess);
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[1000].Properties().name, L"L");
}

TEST(LegacySchema, WrongChecksumKeepsTheTablesRead)
{
    std::string bytes = SchemaBytes(Everything());
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    qel::TLegacyTables tables;
    EXPECT_EQ(ReadCode(bytes, tables), qel::kChecksumMismatch);
    EXPECT_EQ(tables.size(), 2U);
}

TEST(LegacySchema, TypeOutsideTheKnownOnesIsReadAsItStands)
{
    qel::TLegacyTables tables{{1000, Lamps()}};
    tables[1000].Properties().columns[0].type = static_cast<CQelProperty::EType>(-5);
    qel::TLegacyTables read;
    ASSERT_EQ(ReadCode(SchemaBytes(tables), read), qel::kSuccess);
    EXPECT_EQ(static_cast<int>(read[1000].Columns()[0].type), -5);
}

TEST(LegacySchema, CutAtAnyByteEndsEarly)
{
    const std::string whole = SchemaBytes(Everything());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        qel::TLegacyTables tables;
        EXPECT_EQ(ReadCode(whole.substr(0, size), tables), qel::kEndOfStream) << size;
    }
}

TEST(LegacySchema, AnyFlippedBitIsNoticed)
{
    const std::string whole = SchemaBytes(Everything());
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        std::string damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
        qel::TLegacyTables tables;
        const unsigned int code = ReadCode(damaged, tables);
        EXPECT_TRUE(code == qel::kChecksumMismatch || code == qel::kEndOfStream) << bit << ": " << code;
    }
}

TEST(LegacySchema, CountsBeyondTheBytesTakeNoMemory)
{
    const std::string whole = SchemaBytes(Everything());
    for (std::size_t at = 0; at + 4 <= whole.size(); ++at) {
        for (const char* count : {"ffffffff", "ffffff7f", "00286bee"}) {
            std::string damaged = whole;
            damaged.replace(at, 4, BytesOf(count));
            qel::TLegacyTables tables;
            const unsigned int code = ReadCode(damaged, tables);
            EXPECT_TRUE(code == qel::kChecksumMismatch || code == qel::kEndOfStream) << at << ": " << code;
        }
    }
}
