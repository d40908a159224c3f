// table_definition_test.cpp: the definition of one table, and the value list of a record.
#include <gtest/gtest.h>
#include <qelprop4/qeltable.h>
#include <support/show_value.h>

#include <type_traits>
#include <utility>

namespace {

using qeltest::Show;
using TRecord = std::vector<SQelPropColumnData>;

CQelTable::SQelColumn Column(unsigned long oid, const std::wstring& name)
{
    CQelTable::SQelColumn column;
    column.oid = oid;
    column.name = name;
    return column;
}

CQelTable FullTable()
{
    CQelTable table(7);
    table.Properties().name = L"Lamps";
    table.Properties().description = L"for the house";
    table.Properties().flag = true;
    CQelTable::SQelColumn column = Column(3, L"Power");
    column.type = CQelProperty::eInt;
    column.description = L"in watts";
    column.refTable = 11;
    column.refColumn = 12;
    column.defaultValue.SetInt(60);
    column.displayHint = 2;
    column.format = L"%d W";
    column.currency = L"EUR";
    column.displayOrder = -4;
    table.Properties().columns = {column, Column(5, L"Colour")};
    return table;
}

void ExpectFull(const CQelTable& table)
{
    EXPECT_EQ(table.Properties().oid, 7u);
    EXPECT_EQ(table.Properties().name, L"Lamps");
    EXPECT_EQ(table.Properties().description, L"for the house");
    EXPECT_TRUE(table.Properties().flag);
    ASSERT_EQ(table.Columns().size(), 2u);
    const CQelTable::SQelColumn& column = table.Columns()[0];
    EXPECT_EQ(column.oid, 3u);
    EXPECT_EQ(column.type, CQelProperty::eInt);
    EXPECT_EQ(column.name, L"Power");
    EXPECT_EQ(column.description, L"in watts");
    EXPECT_EQ(column.refTable, 11u);
    EXPECT_EQ(column.refColumn, 12u);
    EXPECT_EQ(Show(column.defaultValue), "60");
    EXPECT_EQ(column.displayHint, 2u);
    EXPECT_EQ(column.format, L"%d W");
    EXPECT_EQ(column.currency, L"EUR");
    EXPECT_EQ(column.displayOrder, -4);
    EXPECT_EQ(table.Columns()[1].name, L"Colour");
}

TRecord RecordOf(std::initializer_list<std::pair<unsigned long, int>> values)
{
    TRecord record;
    record.reserve(values.size());
    for (const auto& [oid, number] : values) {
        record.emplace_back().columnOid = oid;
        record.back().value.SetInt(number);
    }
    return record;
}

TEST(TableDefinition, FreshTableIsEmptyUnderItsOid)
{
    const CQelTable table(42);
    EXPECT_EQ(table.Properties().oid, 42u);
    EXPECT_EQ(table.Properties().name, L"");
    EXPECT_EQ(table.Properties().description, L"");
    EXPECT_TRUE(table.Columns().empty());
    EXPECT_FALSE(table.Properties().flag);
}

TEST(TableDefinition, DefaultConstructionUsesOidZero)
{
    EXPECT_EQ(CQelTable().Properties().oid, 0u);
    EXPECT_FALSE(CQelTable().Properties().flag);
}

TEST(TableDefinition, FreshColumnIsATextWithHintOne)
{
    const CQelTable::SQelColumn column;
    EXPECT_EQ(column.oid, 0u);
    EXPECT_EQ(column.type, 1);
    EXPECT_EQ(column.name, L"");
    EXPECT_EQ(column.description, L"");
    EXPECT_EQ(column.refTable, 0u);
    EXPECT_EQ(column.refColumn, 0u);
    EXPECT_TRUE(column.defaultValue.IsNull());
    EXPECT_EQ(column.displayHint, 1u);
    EXPECT_EQ(column.format, L"");
    EXPECT_EQ(column.currency, L"");
    EXPECT_EQ(column.displayOrder, 0);
}

TEST(TableDefinition, CopyCarriesEveryField)
{
    const CQelTable original = FullTable();
    CQelTable copy(original);
    ExpectFull(copy);
    copy.Properties().columns.clear();
    ExpectFull(original);
}

TEST(TableDefinition, AssignmentReplacesEveryField)
{
    const CQelTable original = FullTable();
    CQelTable other(9);
    other.Properties().columns.resize(5);
    static_assert(std::is_same_v<decltype(other = original), const CQelTable&>);
    EXPECT_EQ(&(other = original), &other);
    ExpectFull(other);
}

TEST(TableDefinition, CopyIsIndependentOfItsOriginal)
{
    CQelTable original = FullTable();
    const CQelTable copy(original);
    original.Properties().columns[0].defaultValue.SetInt(1);
    original.Properties().name = L"Other";
    ExpectFull(copy);
}

TEST(TableDefinition, AssigningATableToItselfChangesNothing)
{
    CQelTable table = FullTable();
    const CQelTable& same = table;
    table = same;
    ExpectFull(table);
}

TEST(TableDefinition, MovingATableToItselfChangesNothing)
{
    CQelTable table = FullTable();
    CQelTable& same = table;
    table = std::move(same);
    ExpectFull(table);
}

TEST(TableDefinition, MoveCarriesEveryField)
{
    CQelTable original = FullTable();
    CQelTable moved(std::move(original));
    ExpectFull(moved);
    CQelTable assigned;
    assigned = std::move(moved);
    ExpectFull(assigned);
}

TEST(TableDefinition, TableIsABaseObjectWithAVirtualDestructor)
{
    static_assert(std::is_base_of_v<CQelBase, CQelTable>);
    static_assert(std::has_virtual_destructor_v<CQelTable>);
}

TEST(ColumnLookup, FindsTheFirstColumnOfTheOid)
{
    CQelTable table;
    table.Properties().columns = {Column(3, L"a"), Column(5, L"first"), Column(5, L"second")};
    CQelTable::SQelColumn found;
    EXPECT_TRUE(table.GetColumn(5, found));
    EXPECT_EQ(found.name, L"first");
    EXPECT_EQ(found.oid, 5u);
}

TEST(ColumnLookup, MissLeavesTheOutputAlone)
{
    CQelTable::SQelColumn untouched = Column(99, L"kept");
    untouched.defaultValue.SetInt(8);
    EXPECT_FALSE(FullTable().GetColumn(4, untouched));
    EXPECT_FALSE(CQelTable().GetColumn(0, untouched));
    EXPECT_EQ(untouched.oid, 99u);
    EXPECT_EQ(untouched.name, L"kept");
    EXPECT_EQ(Show(untouched.defaultValue), "8");
}

TEST(ColumnLookup, WideOidIsNotCutToOneThatExists)
{
    if (sizeof(unsigned long) == 4)
        GTEST_SKIP() << "no oid can be wide here";
    CQelTable::SQelColumn untouched;
    EXPECT_FALSE(FullTable().GetColumn(static_cast<unsigned long>(0x100000003ULL), untouched));
    EXPECT_EQ(untouched.oid, 0u);
}

TEST(RecordLookup, BothFormsFindTheFirstOfTwoElements)
{
    TRecord record = RecordOf({{4, 40}, {6, 60}, {6, 61}});
    const TRecord& fixed = record;
    TRecord::iterator it;
    TRecord::const_iterator fixedIt;
    ASSERT_TRUE(CQelTable::GetColumnData(6, record, it));
    ASSERT_TRUE(CQelTable::GetColumnData(6, fixed, fixedIt));
    EXPECT_EQ(Show(it->value), "60");
    EXPECT_EQ(Show(fixedIt->value), "60");
}

TEST(RecordLookup, MissGivesTheEndOfTheRecord)
{
    TRecord record = RecordOf({{4, 40}});
    const TRecord& fixed = record;
    TRecord::iterator it = record.begin();
    TRecord::const_iterator fixedIt = fixed.begin();
    EXPECT_FALSE(CQelTable::GetColumnData(5, record, it));
    EXPECT_FALSE(CQelTable::GetColumnData(5, fixed, fixedIt));
    EXPECT_EQ(it, record.end());
    EXPECT_EQ(fixedIt, fixed.end());
}

TEST(RecordLookup, EmptyRecordLeavesTheConstIteratorAlone)
{
    const TRecord elsewhere = RecordOf({{4, 40}});
    const TRecord empty;
    TRecord::const_iterator it = elsewhere.begin();
    EXPECT_FALSE(CQelTable::GetColumnData(4, empty, it));
    EXPECT_EQ(it, elsewhere.begin());
}

TEST(RecordLookup, EmptyRecordSetsTheOtherIteratorToItsEnd)
{
    TRecord elsewhere = RecordOf({{4, 40}});
    TRecord empty;
    TRecord::iterator it = elsewhere.begin();
    EXPECT_FALSE(CQelTable::GetColumnData(4, empty, it));
    EXPECT_EQ(it, empty.end());
}

TEST(RecordLookup, FoundElementCanBeChanged)
{
    TRecord record = RecordOf({{4, 40}, {6, 60}});
    TRecord::iterator it;
    ASSERT_TRUE(CQelTable::GetColumnData(6, record, it));
    it->value.SetBool(true);
    EXPECT_EQ(Show(record[1].value), "true");
}

} // namespace
