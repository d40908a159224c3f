// legacy_database.h: a legacy database in a folder of its own, with a log and a notifier that remember.
#pragma once

#include "recording_log.h"
#include "recording_notifier.h"
#include "result_matchers.h"
#include "sample_values.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>
#include <qelprop4/qelprop4.h>

#include <map>
#include <string>
#include <vector>

namespace qeltest {

using SLegacyColumn = CQelTable3X::SQelColumn;
using TRecord = std::vector<SQelPropColumnData>;

/// The database with its protected operations within reach.
class CLegacyDatabase : public CQelPropDB3X
{
public:
    using CQelPropDB3X::DoNotify;
    using CQelPropDB3X::LoadTables;
    using CQelPropDB3X::StoreTables;
};

/// Keeps the entries of the database alone; the store writes its own lines to the same log.
class CLegacyLog : public CRecordingLog
{
public:
    bool Write(const SEntry& entry) override
    {
        return entry.file != L".\\qelpropdb3x" || CRecordingLog::Write(entry);
    }
    /// What was logged since the last call.
    std::string Take()
    {
        std::string text = Text();
        Forget();
        return text;
    }
};

SLegacyColumn Column(const std::wstring& name, CQelProperty::EType type = CQelProperty::eString,
                     int dataIndex = -1);
/// A record of these values; its elements name no column, which nothing asks for.
TRecord Values(const std::vector<CQelProperty>& values);
/// "1='a' 2=5 3=null": column oid and value of each element.
std::string Show(const TRecord& record);
/// One table as a line: "1000 Lamps: 1 Power@0 2 Colour@1"; columns with oid, name and slot.
std::string Show(const CQelTable3X& table);
/// The catalogue, a table a line.
std::string Show(CQelPropDB3X& db);
/// Everything: the catalogue, and under each table its records in ascending order of oid.
std::string Dump(CQelPropDB3X& db);
std::string List(const std::vector<unsigned long>& oids);
/// The bytes of a stored record as hexadecimal digits; "none" when there is none.
std::string StoredHex(const CQelPropDB3X& db, unsigned short selector, unsigned int oid,
                      const char* groups = "");

/// An open, empty database; log and notifier hear what comes after that.
class CLegacyTest : public testing::Test
{
public:
    ~CLegacyTest() override;

protected:
    CLegacyTest();

    unsigned long AddTable(const std::wstring& name, const std::vector<SLegacyColumn>& columns = {});
    /// Adds a record under an automatic oid, which comes back.
    unsigned long Add(unsigned long table, const std::vector<CQelProperty>& values);
    /// Stores bytes under any address, past the database.
    void StoreBytes(unsigned short selector, unsigned int oid, const std::string& bytes);
    /// Writes a schema in which the tables have the oids that they say, and loads it.
    void UseSchema(const std::vector<CQelTable3X>& tables);
    void Reopen(bool readOnly = false);
    std::string Record(unsigned long table, unsigned long record);
    void ForgetAll();

    CTemporaryFolder folder;
    std::wstring path = folder.Path(L"legacy.store");
    CLegacyLog log;
    CRecordingNotifier notifier;
    CLegacyDatabase db;
};

} // namespace qeltest
