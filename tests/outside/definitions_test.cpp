// definitions_test.cpp: tables, columns and record values as exchange objects.
#include "property_host.h"

#include <type_traits>

using namespace outside;

namespace {

TEST(OutsideDefinitions, FreshColumnIsATextWithHintOne)
{
    const CQelTable::SQelColumn column;
    EXPECT_EQ(column.oid, 0ul);
    EXPECT_EQ(column.type, CQelProperty::eString);
    EXPECT_TRUE(column.name.empty() && column.description.empty() && column.format.empty());
    EXPECT_TRUE(column.currency.empty());
    EXPECT_EQ(column.refTable, 0ul);
    EXPECT_EQ(column.refColumn, 0ul);
    EXPECT_TRUE(column.defaultValue.IsNull());
    EXPECT_EQ(column.displayHint, 1u);
    EXPECT_EQ(column.displayOrder, 0);
}

struct SHostEntry
{
    int number;
    CQelTable table;
    CQelTable3X legacy;
};

TEST(OutsideDefinitions, StructuresThatHoldTablesAreMadeByBraces)
{
    const SHostEntry entry = {};
    const CQelTable table = {};
    EXPECT_EQ(entry.table.Properties().oid, 0ul);
    EXPECT_EQ(entry.legacy.Properties().oid, 0ul);
    EXPECT_TRUE(table.Columns().empty());
}

TEST(OutsideDefinitions, FreshTableHasItsOidAndNothingElse)
{
    const CQelTable table(7), none;
    EXPECT_EQ(table.Properties().oid, 7ul);
    EXPECT_EQ(none.Properties().oid, 0ul);
    EXPECT_TRUE(table.Properties().name.empty() && table.Properties().description.empty());
    EXPECT_TRUE(table.Columns().empty());
    EXPECT_FALSE(table.Properties().flag);
}

TEST(OutsideDefinitions, TableIsAPolymorphicValueOfTheFamily)
{
    static_assert(std::is_base_of_v<CQelBase, CQelTable> && std::is_base_of_v<CObject, CQelTable>);
    static_assert(std::is_base_of_v<CQelBase, CQelPropDB> && std::has_virtual_destructor_v<CQelTable>);
    CQelTable a, b;
    static_assert(std::is_same_v<decltype(a = static_cast<const CQelTable&>(b)), const CQelTable&>);
    SUCCEED();
}

TEST(OutsideDefinitions, CopyAndAssignmentTakeEveryField)
{
    CQelTable source(7);
    source.Properties().name = L"Lamps";
    source.Properties().description = L"d";
    source.Properties().flag = true;
    source.Properties().columns = {Column(L"a"), Column(L"b", CQelProperty::eBool, 3)};
    source.Properties().columns[0].defaultValue = Number(9);
    const CQelTable copy(source);
    CQelTable assigned(1);
    assigned = source;
    const CQelTable& self = assigned;
    assigned = self;
    for (const CQelTable* table : {&copy, static_cast<const CQelTable*>(&assigned)}) {
        EXPECT_EQ(table->Properties().oid, 7ul);
        EXPECT_EQ(table->Properties().name, L"Lamps");
        EXPECT_EQ(table->Properties().description, L"d");
        EXPECT_TRUE(table->Properties().flag);
        ASSERT_EQ(table->Columns().size(), 2u);
        EXPECT_TRUE(table->Columns()[0].defaultValue == Number(9));
        EXPECT_EQ(table->Columns()[1].displayOrder, 3);
    }
}

TEST(OutsideDefinitions, ColumnIsFoundFromTheFrontOrLeavesTheArgument)
{
    CQelTable table;
    table.Properties().columns = {Column(L"a"), Column(L"b"), Column(L"c")};
    table.Properties().columns[1].oid = 5;
    table.Properties().columns[2].oid = 5;
    CQelTable::SQelColumn out = Column(L"mine");
    EXPECT_FALSE(table.GetColumn(9, out));
    EXPECT_EQ(out.name, L"mine");
    EXPECT_TRUE(table.GetColumn(5, out));
    EXPECT_EQ(out.name, L"b");
}

TEST(OutsideDefinitions, FirstOfTwoValuesOfAColumnIsFound)
{
    std::vector<SQelPropColumnData> record = {Data(1, Number(1)), Data(2, Number(2)), Data(2, Number(3))};
    std::vector<SQelPropColumnData>::iterator it;
    EXPECT_TRUE(CQelTable::GetColumnData(2, record, it));
    EXPECT_EQ(it - record.begin(), 1);
    EXPECT_FALSE(CQelTable::GetColumnData(9, record, it));
    EXPECT_EQ(it, record.end());
    const auto& constant = record;
    std::vector<SQelPropColumnData>::const_iterator found;
    EXPECT_TRUE(CQelTable::GetColumnData(2, constant, found));
    EXPECT_EQ(found - constant.begin(), 1);
    EXPECT_FALSE(CQelTable::GetColumnData(9, constant, found));
    EXPECT_EQ(found, constant.end());
}

TEST(OutsideDefinitions, EmptyRecordLeavesTheConstantIteratorAndEndsTheOther)
{
    const std::vector<SQelPropColumnData> other = {Data(1, Number(1))};
    const std::vector<SQelPropColumnData> empty;
    std::vector<SQelPropColumnData>::const_iterator kept = other.begin();
    EXPECT_FALSE(CQelTable::GetColumnData(1, empty, kept));
    EXPECT_TRUE(kept == other.begin());
    std::vector<SQelPropColumnData> changeable;
    std::vector<SQelPropColumnData>::iterator it;
    EXPECT_FALSE(CQelTable::GetColumnData(1, changeable, it));
    EXPECT_TRUE(it == changeable.end());
}

TEST(OutsideDefinitions, MessagesHaveTheirNumbers)
{
    EXPECT_EQ(ePropDBOpened, 0);
    EXPECT_EQ(ePropDBClosed, 1);
    EXPECT_EQ(ePropDBTableAdded, 2);
    EXPECT_EQ(ePropDBTableChanged, 3);
    EXPECT_EQ(ePropDBTableRemoved, 4);
    EXPECT_EQ(ePropDBRecordAdded, 5);
    EXPECT_EQ(ePropDBRecordSet, 6);
    EXPECT_EQ(ePropDBRecordRemoved, 7);
}

} // namespace
