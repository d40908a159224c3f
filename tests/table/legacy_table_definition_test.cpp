// legacy_table_definition_test.cpp: where the legacy database's table definition differs.
#include <gtest/gtest.h>
#include <qelprop4/qeltable3x.h>
#include <support/show_value.h>

#include <type_traits>

namespace {

using qeltest::Show;
using TRecord = std::vector<SQelPropColumnData>;

CQelTable3X TableWithSlots()
{
    CQelTable3X table(1000);
    table.Properties().name = L"Lamps";
    table.Properties().description = L"for the house";
    table.Properties().flag = true;
    table.Properties().columns.resize(2);
    CQelTable3X::SQelColumn& column = table.Properties().columns[0];
    column.oid = 3;
    column.name = L"Power";
    column.defaultValue.SetInt(60);
    column.dataIndex = 4;
    table.Properties().columns[1].oid = 5;
    return table;
}

void ExpectSlots(const CQelTable3X& table)
{
    EXPECT_EQ(table.Properties().oid, 1000u);
    EXPECT_EQ(table.Properties().name, L"Lamps");
    EXPECT_EQ(table.Properties().description, L"for the house");
    EXPECT_TRUE(table.Properties().flag);
    ASSERT_EQ(table.Columns().size(), 2u);
    EXPECT_EQ(table.Columns()[0].dataIndex, 4);
    EXPECT_EQ(table.Columns()[0].name, L"Power");
    EXPECT_EQ(Show(table.Columns()[0].defaultValue), "60");
    EXPECT_EQ(table.Columns()[1].dataIndex, -1);
}

TEST(LegacyTableDefinition, FreshColumnHasNoSlot)
{
    const CQelTable3X::SQelColumn column;
    EXPECT_EQ(column.dataIndex, -1);
    EXPECT_EQ(column.type, CQelProperty::eString);
    EXPECT_EQ(column.displayHint, 1u);
    EXPECT_EQ(column.refTable, 0u);
    EXPECT_EQ(column.refColumn, 0u);
    EXPECT_EQ(column.displayOrder, 0);
    EXPECT_TRUE(column.defaultValue.IsNull());
    EXPECT_EQ(column.oid, 0u);
}

TEST(LegacyTableDefinition, FreshTableIsEmptyUnderItsOid)
{
    EXPECT_EQ(CQelTable3X(42).Properties().oid, 42u);
    EXPECT_EQ(CQelTable3X().Properties().oid, 0u);
    EXPECT_TRUE(CQelTable3X(42).Columns().empty());
    EXPECT_FALSE(CQelTable3X(42).Properties().flag);
}

TEST(LegacyTableDefinition, CopiesKeepEverySlot)
{
    const CQelTable3X original = TableWithSlots();
    CQelTable3X copy(original);
    ExpectSlots(copy);
    copy.Properties().columns.clear();
    ExpectSlots(original);
    CQelTable3X assigned(1);
    static_assert(std::is_same_v<decltype(assigned = original), const CQelTable3X&>);
    EXPECT_EQ(&(assigned = original), &assigned);
    ExpectSlots(assigned);
}

TEST(LegacyTableDefinition, MovesKeepEverySlot)
{
    CQelTable3X original = TableWithSlots();
    CQelTable3X moved(std::move(original));
    ExpectSlots(moved);
    CQelTable3X assigned;
    assigned = std::move(moved);
    ExpectSlots(assigned);
}

TEST(LegacyTableDefinition, AssigningATableToItselfChangesNothing)
{
    CQelTable3X table = TableWithSlots();
    const CQelTable3X& same = table;
    table = same;
    ExpectSlots(table);
}

TEST(LegacyTableDefinition, MovingATableToItselfChangesNothing)
{
    CQelTable3X table = TableWithSlots();
    CQelTable3X& same = table;
    table = std::move(same);
    ExpectSlots(table);
}

TEST(LegacyTableDefinition, ColumnIsFoundWithItsSlot)
{
    CQelTable3X::SQelColumn column;
    ASSERT_TRUE(TableWithSlots().GetColumn(3, column));
    EXPECT_EQ(column.dataIndex, 4);
    EXPECT_FALSE(TableWithSlots().GetColumn(6, column));
    EXPECT_EQ(column.dataIndex, 4);
}

TEST(LegacyTableDefinition, RecordLookupDoesNotUseTheTable)
{
    TRecord record(2);
    record[1].columnOid = 77;
    record[1].value.SetInt(9);
    const TRecord& fixed = record;
    TRecord::iterator it;
    TRecord::const_iterator fixedIt;
    ASSERT_TRUE(CQelTable3X().GetColumnData(77, record, it));
    ASSERT_TRUE(CQelTable3X().GetColumnData(77, fixed, fixedIt));
    EXPECT_EQ(Show(it->value), "9");
    EXPECT_EQ(Show(fixedIt->value), "9");
    EXPECT_FALSE(CQelTable3X().GetColumnData(78, fixed, fixedIt));
    EXPECT_EQ(fixedIt, fixed.end());
}

TEST(LegacyTableDefinition, EmptyRecordMovesOnlyTheIteratorThatIsNotConst)
{
    TRecord elsewhere(1);
    const TRecord& fixedElsewhere = elsewhere;
    TRecord empty;
    const TRecord& fixedEmpty = empty;
    TRecord::iterator it = elsewhere.begin();
    TRecord::const_iterator fixedIt = fixedElsewhere.begin();
    EXPECT_FALSE(CQelTable3X().GetColumnData(0, empty, it));
    EXPECT_FALSE(CQelTable3X().GetColumnData(0, fixedEmpty, fixedIt));
    EXPECT_EQ(it, empty.end());
    EXPECT_EQ(fixedIt, fixedElsewhere.begin());
}

} // namespace
