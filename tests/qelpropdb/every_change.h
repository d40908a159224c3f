// every_change.h: one call of every operation that changes something, for tests that make each of them fail.
#pragma once

#include "lamps.h"

#include <ostream>
#include <string>
#include <vector>

namespace qeltest {

struct SChange
{
    const char* name;
    unsigned int (*work)(CQelPropDB& db);
    /// True for the two that pass a transaction that cannot begin for success.
    bool quietStart = false;
    /// True for the changes of tables and columns: once committed, they stand even if the catalogue cannot be
    /// read back.
    bool readsBack = false;
};

inline void PrintTo(const SChange& change, std::ostream* out)
{
    *out << change.name;
}

/// On the database that FillForChanges makes. Each of them succeeds there and changes what is stored.
inline const std::vector<SChange>& EveryChange()
{
    static const std::vector<SChange> changes = {
        {"Create", [](CQelPropDB& db) { return db.Attach(true, nullptr); }},
        {"CreateLookupIndexes", [](CQelPropDB& db) { return db.CreateLookupIndexes(); }},
        {"AddTable",
         [](CQelPropDB& db) {
             CQelTable table = TableOf(L"New", {Column(L"a"), Column(L"b", CQelProperty::eInt, 1)});
             return db.AddTable(table);
         },
         true, true},
        {"RemoveTable", [](CQelPropDB& db) { return db.RemoveTable(1); }, false, true},
        {"RenameTable", [](CQelPropDB& db) { return db.RenameTable(1, L"Bulbs"); }, false, true},
        {"TableAddColumn",
         [](CQelPropDB& db) {
             CQelTable::SQelColumn column = Column(L"Size", CQelProperty::eInt, 9999);
             return db.TableAddColumn(1, column);
         },
         false, true},
        {"TableRemoveColumn", [](CQelPropDB& db) { return db.TableRemoveColumn(1, 1); }, false, true},
        {"TableModifyColumn",
         [](CQelPropDB& db) {
             CQelTable::SQelColumn column = Column(L"Watts", CQelProperty::eInt);
             column.oid = 1;
             return db.TableModifyColumn(1, column);
         },
         false, true},
        {"RenameColumn", [](CQelPropDB& db) { return db.RenameColumn(1, 1, L"Watts"); }, false, true},
        {"TableSwapDisplayOrder", [](CQelPropDB& db) { return db.TableSwapDisplayOrder(1, 1, 2); }, false,
         true},
        {"AddRecord",
         [](CQelPropDB& db) {
             unsigned long oid = 0;
             return db.AddRecord(1, oid, {Value(1, Int(60)), Value(2, Text(L"blue"))}, false);
         }},
        {"SetRecord",
         [](CQelPropDB& db) {
             return db.SetRecord(1, 1, {Value(1, Int(60)), Value(2, Text(L"blue"))});
         }},
        {"RemoveRecord", [](CQelPropDB& db) { return db.RemoveRecord(1, 1); }, true}};
    return changes;
}

/// Lamps (1) with Power (1) and Colour (2) and a record; Rooms (2) with two display orders of 0 to repair.
inline void FillForChanges(CQelPropDB& db)
{
    CQelTable lamps = TableOf(
        L"Lamps", {Column(L"Power", CQelProperty::eInt), Column(L"Colour", CQelProperty::eString, 1)});
    CQelTable rooms = TableOf(L"Rooms", {Column(L"Name"), Column(L"Floor")});
    db.AddTable(lamps);
    db.AddTable(rooms);
    unsigned long oid = 0;
    db.AddRecord(1, oid, {Value(1, Int(40)), Value(2, Text(L"red"))}, false);
}

/// Everything that is stored, indexes included.
inline std::string Stored(CQelSQLite& sql)
{
    return Rows(sql, "SELECT sql FROM sqlite_master ORDER BY rowid") + Rows(sql, "SELECT * FROM qeltpt") +
           Rows(sql, "SELECT * FROM qeltpc") + Rows(sql, "SELECT foid,toid,coid,data FROM qeltpd");
}

struct SChangeName
{
    std::string operator()(const testing::TestParamInfo<SChange>& row) const { return row.param.name; }
};

} // namespace qeltest
