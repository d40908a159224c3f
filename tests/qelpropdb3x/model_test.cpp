// model_test.cpp: random operations give what a model in memory gives, with reopening in between.
#include "legacy_model.h"

#include <random>

using namespace qeltest;

namespace {

class LegacyModel : public CLegacyTest, public testing::WithParamInterface<unsigned int>
{
protected:
    LegacyModel() { log.SetLevel(0); }

    unsigned long Below(unsigned long bound) { return random() % bound; }
    bool Rarely() { return Below(12) == 0; }
    unsigned long SomeTable() { return Rarely() ? 999 + Below(3) * 32768 : 1000 + Below(4); }
    unsigned long SomeColumn() { return Below(6); }
    unsigned long SomeRecord()
    {
        constexpr unsigned long kFar[] = {0, 65536, 4294967293UL, 4294967294UL, 4294967295UL};
        return Below(40) == 0 ? kFar[Below(5)] : 1 + Below(30);
    }
    std::wstring SomeName()
    {
        constexpr const wchar_t* kNames[] = {L"A", L"B", L"C", L"D", L"E", L"F", L"G", L"a-b", L""};
        return kNames[Below(9)];
    }
    SLegacyColumn SomeColumnDefinition()
    {
        constexpr CQelProperty::EType kTypes[] = {CQelProperty::eInt, CQelProperty::eInt,
                                                  CQelProperty::eString, CQelProperty::eReference};
        SLegacyColumn column = Column(SomeName(), kTypes[Below(4)], static_cast<int>(Below(9)) - 4);
        column.oid = SomeColumn();
        column.displayOrder = static_cast<int>(Below(6)) - 1;
        column.refTable = SomeTable();
        column.refColumn = SomeColumn();
        return column;
    }
    CQelProperty SomeValue()
    {
        CQelProperty value;
        switch (Below(6)) {
        case 0:
            break;
        case 1:
        case 2:
            value.SetString(std::wstring(Below(4), static_cast<wchar_t>(L'a' + Below(3))));
            break;
        case 3:
            value.SetReference(SomeRecord());
            break;
        default:
            value.SetInt(static_cast<int>(Below(9)) - 4);
        }
        return value;
    }
    TRecord SomeValues()
    {
        TRecord values(Below(7));
        for (SQelPropColumnData& element : values)
            element = {SomeColumn(), SomeValue()};
        return values;
    }

    void ChangeTables()
    {
        const unsigned long table = SomeTable();
        if (Below(3) == 0) {
            ASSERT_EQ(db.RemoveTable(table), model.RemoveTable(table));
            return;
        }
        const std::wstring name = SomeName();
        if (Below(3) == 0) {
            ASSERT_EQ(db.RenameTable(table, name), model.RenameTable(table, name));
            return;
        }
        if (model.tables.size() > 4)
            return;
        CQelTable3X added(77);
        added.Properties().name = name;
        for (unsigned long n = Below(3); n > 0; --n)
            added.Properties().columns.push_back(SomeColumnDefinition());
        unsigned long expected = 77;
        const unsigned int code = model.AddTable(name, added.Columns(), expected);
        ASSERT_EQ(db.AddTable(added), code);
        ASSERT_EQ(added.Properties().oid, code == 10001 ? expected : 77);
    }
    void ChangeColumns()
    {
        const unsigned long table = SomeTable();
        SLegacyColumn column = SomeColumnDefinition();
        const unsigned long given = column.oid;
        const unsigned long other = SomeColumn();
        unsigned long added = given;
        switch (Below(5)) {
        case 0:
            ASSERT_EQ(db.TableModifyColumn(table, column), model.ModifyColumn(table, column));
            break;
        case 1:
            ASSERT_EQ(db.RenameColumn(table, given, column.name),
                      model.RenameColumn(table, given, column.name));
            break;
        case 2:
            ASSERT_EQ(db.TableSwapDisplayOrder(table, given, other), model.Swap(table, given, other));
            break;
        case 3: {
            const unsigned int code = model.AddColumn(table, column, added);
            ASSERT_EQ(db.TableAddColumn(table, column), code);
            ASSERT_EQ(column.oid, code == 10001 ? added : given);
            break;
        }
        default:
            ASSERT_EQ(db.TableRemoveColumn(table, given), model.RemoveColumn(table, given));
        }
    }
    void WriteRecord()
    {
        const unsigned long table = SomeTable();
        const TRecord values = SomeValues();
        unsigned long record = SomeRecord();
        unsigned long expected = record;
        switch (Below(4)) {
        case 0:
            ASSERT_EQ(db.SetRecord(table, record, values), model.SetRecord(table, record, values));
            break;
        case 1:
            ASSERT_EQ(db.RemoveRecord(table, record), model.RemoveRecord(table, record));
            break;
        default: {
            const bool useGiven = Rarely();
            const unsigned int code = model.AddRecord(table, expected, values, useGiven);
            const unsigned long before = record;
            ASSERT_EQ(db.AddRecord(table, record, values, useGiven), code);
            ASSERT_EQ(record, code == 10001 ? expected : before);
        }
        }
    }
    void ReadRecord()
    {
        const unsigned long table = SomeTable();
        const unsigned long record = SomeRecord();
        const auto found = model.tables.find(table);
        const bool known = found != model.tables.end() && found->second.records.count(record) != 0;
        ASSERT_EQ(db.HasRecord(table, record), known);
        TRecord values = SomeValues();
        ASSERT_EQ(db.GetRecord(table, record, values), known ? 10001U : 10020U);
        if (!known)
            return;
        const TRecord expected = CLegacyModel::Read(found->second, found->second.records[record]);
        ASSERT_EQ(Show(values), Show(expected));
        const unsigned long column = SomeColumn();
        SQelPropColumnData value;
        const auto element = std::find_if(expected.begin(), expected.end(),
                                          [&](const auto& each) { return each.columnOid == column; });
        ASSERT_EQ(db.GetColumn(table, record, column, value), element != expected.end() ? 10001U : 10020U);
        if (element != expected.end()) {
            ASSERT_EQ(Show(TRecord{value}), Show(TRecord{*element}));
        }
    }
    void ListRecords()
    {
        const unsigned long table = SomeTable();
        const auto found = model.tables.find(table);
        std::vector<unsigned long> oids;
        std::vector<CQelPropDB3X::SSortItem> items(Below(3));
        for (auto& item : items)
            item = {SomeColumn(), Below(2) == 0};
        ASSERT_EQ(db.GetRecordOids(table, oids, &items), found != model.tables.end() ? 10001U : 10020U);
        if (found == model.tables.end())
            return;
        CheckOrder(found->second, oids, items);
        std::sort(oids.begin(), oids.end());
        unsigned int count = 0;
        ASSERT_THAT(db.GetRecordCount(table, count), Succeeds());
        ASSERT_EQ(count, oids.size());
        ASSERT_EQ(oids.size(), found->second.records.size());
        for (const unsigned long oid : oids)
            ASSERT_EQ(found->second.records.count(oid), 1U);
    }
    // Neighbours stand in the order of the first key in which they differ, if that order has a meaning.
    void CheckOrder(const SModelTable& table, const std::vector<unsigned long>& oids,
                    const std::vector<CQelPropDB3X::SSortItem>& items)
    {
        if (table.columns.empty() || items.empty())
            return;
        std::vector<std::vector<CQelProperty>> keys;
        for (const unsigned long oid : oids) {
            const TRecord values = CLegacyModel::Read(table, table.records.at(oid));
            keys.emplace_back();
            for (const auto& item : items) {
                std::size_t place = 0;
                while (place < table.columns.size() && table.columns[place].oid != item.column)
                    ++place;
                keys.back().push_back(values[place < table.columns.size() ? place : 0].value);
            }
        }
        for (std::size_t k = 0; k < items.size(); ++k) {
            std::set<int> types;
            for (const auto& key : keys)
                types.insert(key[k].IsNull() ? keys[0][k].GetType() : key[k].GetType());
            types.erase(CQelProperty::eNull);
            if (types.size() > 1)
                return; // values of different types are in no order
        }
        for (std::size_t i = 1; i < keys.size(); ++i) {
            for (std::size_t k = 0; k < items.size(); ++k) {
                if (keys[i - 1][k] == keys[i][k])
                    continue;
                ASSERT_EQ(keys[i - 1][k] < keys[i][k], items[k].ascending) << i;
                break;
            }
        }
    }
    void Step()
    {
        const unsigned long choice = Below(400);
        if (choice < 6)
            ChangeTables();
        else if (choice < 22)
            ChangeColumns();
        else if (choice < 200)
            WriteRecord();
        else if (choice < 340)
            ReadRecord();
        else if (choice < 397)
            ListRecords();
        else {
            Reopen();
            model.Reopen();
        }
    }

    std::mt19937 random{GetParam()};
    CLegacyModel model;
};

} // namespace

TEST_P(LegacyModel, GivesTheSameAnswersAsTheDatabase)
{
    for (int i = 0; i < 6000; ++i) {
        ASSERT_NO_FATAL_FAILURE(Step()) << "step " << i;
        if (i % 25 == 0) {
            ASSERT_EQ(Dump(db), model.Dump()) << "step " << i;
        }
    }
    Reopen();
    EXPECT_EQ(Dump(db), model.Dump());
    unsigned long errors = 0;
    EXPECT_THAT(db.SelfTest(nullptr, errors, nullptr, 0), Succeeds());
    EXPECT_EQ(errors, 0U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, LegacyModel, testing::Values(1U, 20U, 300U, 4000U));
