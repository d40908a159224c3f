// legacy_database.cpp: a legacy database in a folder of its own, with a log and a notifier that remember.
#include "legacy_database.h"

#include "hex.h"

#include <qelplat4/utf16.h>

#include <algorithm>

namespace qeltest {
namespace {

std::string Show(const CQelProperty& value)
{
    switch (value.GetType()) {
    case CQelProperty::eNull:
        return "null";
    case CQelProperty::eInt:
        return std::to_string(value.Data().uValue.nInt);
    case CQelProperty::eString: {
        const CQelProperty::SData& data = value.Data();
        std::string text = "'";
        for (unsigned int i = 0; i + 2 < data.nBufferSize; i += 2)
            text += static_cast<char>(data.pBuffer[i]); // tests store ASCII
        return text + "'";
    }
    default:
        return "type" + std::to_string(value.GetType()) + ":" + HexOf(value);
    }
}

} // namespace

SLegacyColumn Column(const std::wstring& name, CQelProperty::EType type, int dataIndex)
{
    SLegacyColumn column;
    column.name = name;
    column.type = type;
    column.dataIndex = dataIndex;
    return column;
}

TRecord Values(const std::vector<CQelProperty>& values)
{
    TRecord record;
    record.reserve(values.size());
    for (const CQelProperty& value : values)
        record.push_back({0, value});
    return record;
}

std::string Show(const TRecord& record)
{
    std::string text;
    for (const SQelPropColumnData& element : record)
        text += (text.empty() ? "" : " ") + std::to_string(element.columnOid) + "=" + Show(element.value);
    return text;
}

std::string Show(const CQelTable3X& table)
{
    std::string text = std::to_string(table.Properties().oid) + " " + qel::ToUtf8(table.Properties().name);
    text += table.Columns().empty() ? "" : ":";
    for (const SLegacyColumn& column : table.Columns())
        text += " " + std::to_string(column.oid) + " " + qel::ToUtf8(column.name) + "@" +
                std::to_string(column.dataIndex);
    return text + "\n";
}

std::string Show(CQelPropDB3X& db)
{
    std::vector<unsigned long> oids;
    db.GetTables(oids);
    std::string text;
    for (const unsigned long oid : oids) {
        CQelTable3X table(oid);
        text += db.GetTable(table) == qel::kSuccess ? Show(table) : "unreadable\n";
    }
    return text;
}

std::string Dump(CQelPropDB3X& db)
{
    std::vector<unsigned long> tables;
    db.GetTables(tables);
    std::string text;
    for (const unsigned long oid : tables) {
        CQelTable3X table(oid);
        db.GetTable(table);
        text += Show(table);
        std::vector<unsigned long> records;
        db.GetRecordOids(oid, records, nullptr);
        for (const unsigned long record : records) {
            TRecord values;
            const unsigned int code = db.GetRecord(oid, record, values);
            text += "  " + std::to_string(record) + ": " +
                    (code == qel::kSuccess ? Show(values) : "code " + std::to_string(code)) + "\n";
        }
    }
    return text;
}

std::string List(const std::vector<unsigned long>& oids)
{
    std::string text;
    for (const unsigned long oid : oids)
        text += (text.empty() ? "" : " ") + std::to_string(oid);
    return text;
}

std::string StoredHex(const CQelPropDB3X& db, unsigned short selector, unsigned int oid, const char* groups)
{
    TavBlob blob;
    const unsigned int code = db.BlobDB().Get({selector, oid}, blob);
    if (code == qel::kNotFound)
        return "none";
    return code == qel::kSuccess ? HexOf(blob, groups) : "code " + std::to_string(code);
}

CLegacyTest::CLegacyTest()
{
    db.SetLogfile(&log);
    db.SetNotifyCallback(CRecordingNotifier::Notify, 0);
    EXPECT_THAT(db.Create(path), Succeeds());
    ForgetAll();
}

CLegacyTest::~CLegacyTest()
{
    db.Close();
}

unsigned long CLegacyTest::AddTable(const std::wstring& name, const std::vector<SLegacyColumn>& columns)
{
    CQelTable3X table;
    table.Properties().name = name;
    table.Properties().columns = columns;
    unsigned long oid = 0;
    for (SLegacyColumn& column : table.Properties().columns) {
        column.displayOrder = static_cast<int>(oid);
        column.oid = ++oid;
    }
    EXPECT_THAT(db.AddTable(table), Succeeds());
    ForgetAll();
    return table.Properties().oid;
}

unsigned long CLegacyTest::Add(unsigned long table, const std::vector<CQelProperty>& values)
{
    unsigned long record = 0;
    EXPECT_THAT(db.AddRecord(table, record, Values(values), false), Succeeds());
    ForgetAll();
    return record;
}

void CLegacyTest::StoreBytes(unsigned short selector, unsigned int oid, const std::string& bytes)
{
    EXPECT_THAT(db.BlobDB().Set({selector, oid}, bytes.data(), static_cast<unsigned int>(bytes.size()), 0),
                Succeeds());
}

void CLegacyTest::UseSchema(const std::vector<CQelTable3X>& tables)
{
    std::map<unsigned long, CQelTable3X> schema;
    for (const CQelTable3X& table : tables)
        schema[table.Properties().oid] = table;
    EXPECT_THAT(db.StoreTables(schema), Succeeds());
    Reopen();
}

void CLegacyTest::Reopen(bool readOnly)
{
    db.Close();
    EXPECT_THAT(db.Open(path, readOnly), Succeeds());
    ForgetAll();
}

std::string CLegacyTest::Record(unsigned long table, unsigned long record)
{
    TRecord values;
    const unsigned int code = db.GetRecord(table, record, values);
    return code == qel::kSuccess ? Show(values) : "code " + std::to_string(code);
}

void CLegacyTest::ForgetAll()
{
    log.Forget();
    notifier.Forget();
}

} // namespace qeltest
