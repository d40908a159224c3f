// legacy_check_test.cpp: each fault that check finds in a legacy store, in a store that has just this one.
#include "program_run.h"
#include "support/row_name.h"

#include <gtest/gtest.h>
#include <qelplat4/utf16.h>
#include <qelprop4/qelprop4.h>

#include <map>
#include <sstream>

using namespace qeltest;

namespace {

using SColumn = CQelTable3X::SQelColumn;

constexpr unsigned long kRecord = 2; // the first one of a legacy table

/// The store's tables, to be written back as nobody would have let them be made.
class CDatabase : public CQelPropDB3X
{
public:
    using CQelPropDB3X::LoadTables;
    using CQelPropDB3X::StoreTables;
};

template <class Change>
void ChangeTable(const std::wstring& path, const Change& change)
{
    CDatabase db;
    ASSERT_EQ(db.Open(path, false), qel::kSuccess);
    std::map<unsigned long, CQelTable3X> tables;
    ASSERT_EQ(db.LoadTables(tables), qel::kSuccess);
    change(tables);
    ASSERT_EQ(db.StoreTables(tables), qel::kSuccess);
}

template <class Change>
void ChangeColumns(const std::wstring& path, const Change& change)
{
    ChangeTable(path, [&](auto& tables) { change(tables.begin()->second.Properties().columns); });
}

unsigned short SelectorOfLamps(const std::wstring& path)
{
    CDatabase db;
    std::vector<unsigned long> oids;
    EXPECT_EQ(db.Open(path, true), qel::kSuccess);
    EXPECT_EQ(db.GetTables(oids), qel::kSuccess);
    return oids.empty() ? static_cast<unsigned short>(0) : static_cast<unsigned short>(oids.front());
}

/// Writes a record's bytes with a checksum that fits them.
void StoreBytes(const std::wstring& path, const CDovBlobDB::SSelector& place, const TavBlob& bytes)
{
    CDovBlobDB store;
    ASSERT_EQ(store.Open(path, false), qel::kSuccess);
    ASSERT_EQ(store.Set(place, bytes.GetData(), bytes.GetSize(), 50), qel::kSuccess);
    ASSERT_EQ(store.Close(), qel::kSuccess);
}

TavBlob BytesOf(const CQelProperty& name, const CQelProperty& next)
{
    std::string record("\2\0\0\0", 4); // the number of slots
    for (const CQelProperty* value : {&name, &next}) {
        TavBlob slot;
        slot << *value;
        record.append(reinterpret_cast<const char*>(slot.GetData()), slot.GetSize());
    }
    TavBlob bytes;
    bytes.SetData(record.data(), static_cast<unsigned int>(record.size()));
    return bytes;
}

CQelProperty Text(const wchar_t* text)
{
    CQelProperty value;
    value.SetString(text);
    return value;
}

void StoreValues(const std::wstring& path, const CQelProperty& name, const CQelProperty& next)
{
    StoreBytes(path, {SelectorOfLamps(path), kRecord}, BytesOf(name, next));
}

void CutRecord(const std::wstring& path)
{
    TavBlob bytes = BytesOf(Text(L"Desk"), CQelProperty());
    const std::string whole(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetSize());
    bytes.SetData(whole.data(), 20); // inside the first slot
    StoreBytes(path, {SelectorOfLamps(path), kRecord}, bytes);
}

void StoreTextWithoutEnd(const std::wstring& path)
{
    TavBlob bytes = BytesOf(Text(L"Desk"), CQelProperty());
    std::string whole(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetSize());
    const std::size_t end = whole.find(std::string("k\0\0\0", 4));
    ASSERT_NE(end, std::string::npos);
    whole[end + 2] = 's';
    bytes.SetData(whole.data(), static_cast<unsigned int>(whole.size()));
    StoreBytes(path, {SelectorOfLamps(path), kRecord}, bytes);
}

/// Changes the store's file beneath the store, which is one of the engine's.
void RunOnFile(const std::wstring& path, const wchar_t* sql)
{
    CQelSQLite connection;
    ASSERT_EQ(connection.Open(path), 0);
    ASSERT_EQ(connection.ExecSQL(sql), 0);
}

struct SFault
{
    const char* name;
    void (*make)(const std::wstring& path);
    const char* lines;
};

class LegacyCheck : public testing::TestWithParam<SFault>, protected CKeptRuns
{
protected:
    using CKeptRuns::Run;

    LegacyCheck()
    {
        Run({"init", Path(), "--format", "legacy"});
        Run({"add-table", Path(), "Lamps", "Name:string"});
        Run({"add-column", Path(), "Lamps", "Next:reference:Lamps.Name"});
        Run({"add", Path(), "Lamps", "Name=Desk"});
    }

    std::string Path() const { return CKeptRuns::Path(L"a.store"); }
};

TEST_P(LegacyCheck, FindsAndSaysWhere)
{
    ASSERT_EQ(Run({"check", Path()}), 0) << m_out;
    ASSERT_EQ(m_err, "no faults in 1 table, 1 record, 1 value\n");
    GetParam().make(program.File(L"a.store").wstring());
    EXPECT_EQ(Run({"check", Path()}), 5);
    EXPECT_EQ(m_out, GetParam().lines);
}

TEST_P(LegacyCheck, ChangesNothing)
{
    GetParam().make(program.File(L"a.store").wstring());
    const std::string before = ReadFile(program.File(L"a.store"));
    Run({"check", Path()});
    EXPECT_EQ(ReadFile(program.File(L"a.store")), before);
    EXPECT_EQ(program.Names(), "a.store");
}

INSTANTIATE_TEST_SUITE_P(
    Of, LegacyCheck,
    testing::Values(
        SFault{"RecordOfWrongChecksum",
               [](const std::wstring& path) {
                   RunOnFile(path, L"UPDATE rec SET crc = crc + 1 WHERE id = (SELECT MAX(id) FROM rec)");
               },
               "Lamps @2: a record fails its checksum\n"},
        SFault{"RecordThatIsCut", CutRecord, "Lamps @2: data ends before its content does\n"},
        SFault{"TextWithoutEnd", StoreTextWithoutEnd, "Lamps @2 Name: the text has no end\n"},
        SFault{"ValueOfAnotherType",
               [](const std::wstring& path) {
                   CQelProperty number;
                   number.SetInt(5);
                   StoreValues(path, number, CQelProperty());
               },
               "Lamps @2 Name: the value is of type integer, the column of type string\n"},
        SFault{"ReferenceToNoRecord",
               [](const std::wstring& path) {
                   CQelProperty reference;
                   reference.SetReference(9);
                   StoreValues(path, Text(L"Desk"), reference);
               },
               "Lamps @2 Next: refers to record @9, which is not there\n"},
        SFault{"RecordOfNoTable",
               [](const std::wstring& path) {
                   StoreBytes(path, {77, 5}, BytesOf(Text(L"x"), CQelProperty()));
               },
               "@5: the record stands under selector 77, which is no table's\n"},
        SFault{"ColumnName",
               [](const std::wstring& path) {
                   ChangeColumns(path, [](auto& columns) { columns[0].name = L"a b"; });
               },
               "Lamps a b: the name is not allowed\n"},
        SFault{"ColumnNameTwice",
               [](const std::wstring& path) {
                   ChangeColumns(path, [](auto& columns) { columns[1].name = L"Name"; });
               },
               "Lamps Name: the name occurs more than once\n"},
        SFault{"TableName",
               [](const std::wstring& path) {
                   ChangeTable(path, [](auto& tables) { tables.begin()->second.Properties().name = L"a/b"; });
               },
               "a/b: the name is not allowed\n"},
        SFault{"ColumnType",
               [](const std::wstring& path) {
                   ChangeColumns(
                       path, [](auto& columns) { columns[1].type = static_cast<CQelProperty::EType>(99); });
               },
               "Lamps Next: the column is of type 99, which is no type\n"},
        SFault{"DefaultOfAnotherType",
               [](const std::wstring& path) {
                   ChangeColumns(path, [](auto& columns) { columns[0].defaultValue.SetInt(5); });
               },
               "Lamps Name: the default is of type integer, the column of type string\n"},
        SFault{"ReferenceToNoTable",
               [](const std::wstring& path) {
                   ChangeColumns(path, [](auto& columns) { columns[1].refTable = 9; });
               },
               "Lamps Next: refers to table @9, which is not there\n"},
        SFault{"ReferenceToNoColumn",
               [](const std::wstring& path) {
                   ChangeColumns(path, [](auto& columns) { columns[1].refColumn = 9; });
               },
               "Lamps Next: refers to column @9 of table 'Lamps', which is not there\n"},
        SFault{"SlotTwice",
               [](const std::wstring& path) {
                   ChangeColumns(path, [](auto& columns) { columns[1].dataIndex = 0; });
               },
               "Lamps Next: slot 0 is another column's, too\n"
               "Lamps @2 Next: the value is of type string, the column of type reference\n"},
        SFault{"SlotOutside",
               [](const std::wstring& path) {
                   ChangeColumns(path, [](auto& columns) { columns[1].dataIndex = 7; });
               },
               "Lamps Next: slot 7 is none of the table's records\n"},
        SFault{"SelectorOfAnotherTable",
               [](const std::wstring& path) {
                   ChangeTable(path, [](auto& tables) {
                       CQelTable3X other(tables.begin()->first + 65536);
                       other.Properties().name = L"Other";
                       tables[tables.begin()->first + 65536] = other;
                   });
               },
               "Other: the records stand among those of table 'Lamps'\n"},
        SFault{"SchemaOfWrongChecksum",
               [](const std::wstring& path) {
                   RunOnFile(path, L"UPDATE rec SET crc = crc + 1 WHERE id >> 32 IN (2, 3)");
               },
               "cannot open: a record fails its checksum (10016)\n"}),
    SRowName());

class LegacyCheckAsJson : public LegacyCheck
{};

TEST_P(LegacyCheckAsJson, GivesOneObjectForEachFault)
{
    GetParam().make(program.File(L"a.store").wstring());
    EXPECT_EQ(Run({"check", Path(), "--json"}), 5);
    EXPECT_EQ(m_out, GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Of, LegacyCheckAsJson,
    testing::Values(
        SFault{"Value",
               [](const std::wstring& path) {
                   CQelProperty number;
                   number.SetInt(5);
                   StoreValues(path, number, CQelProperty());
               },
               "{\"fault\":\"type\",\"table\":\"Lamps\",\"record\":2,\"column\":\"Name\",\"message\":\"the "
               "value is of type integer, the column of type string\"}\n"},
        SFault{"Stray",
               [](const std::wstring& path) {
                   StoreBytes(path, {77, 5}, BytesOf(Text(L"x"), CQelProperty()));
               },
               "{\"fault\":\"stray\",\"record\":5,\"message\":\"the record stands under selector 77, which "
               "is no table's\"}\n"}),
    SRowName());

} // namespace
