// main.cpp: writes files for another system, adds to that system's, and shows what files of either hold.
#include "content.h"
#include "show.h"

#include <qelplat4/terminal.h>
#include <qelplat4/utf16.h>

#include <exception>
#include <iostream>

namespace {

using namespace interchange;

/// Both databases below one folder, one after the other.
template <class SqlWork, class LegacyWork>
void OnBoth(const std::wstring& folder, bool create, bool readOnly, SqlWork sqlWork, LegacyWork legacyWork)
{
    CQelSQLite sql;
    if (sql.Open(folder + L"/travels.db", readOnly) != 0)
        throw std::runtime_error("travels.db cannot be opened");
    CQelPropDB db(&sql);
    Check(db.Attach(create, &sql), "Attach");
    sqlWork(db);

    CQelPropDB3X legacy;
    const std::wstring store = folder + L"/travels.store";
    Check(create ? legacy.Create(store) : legacy.Open(store, readOnly), "Open");
    legacyWork(legacy);
    Check(legacy.Close(), "Close");
}

/// Adds one table for every odd name; the first of them holds records.
template <class Table, class Database>
void FillNew(Database& db)
{
    for (const std::wstring& name : OddNames()) {
        const unsigned long oid = AddTable<Table>(db, name);
        if (name == OddNames().front())
            AddRecords<Table>(db, oid);
    }
}

/// Adds records to the second table, and removes and changes some of the first.
template <class Table, class Database>
void Change(Database& db)
{
    std::vector<unsigned long> tables;
    Check(db.GetTables(tables), "GetTables");
    AddRecords<Table>(db, tables.at(1));
    Check(db.RemoveRecord(tables.at(0), 2), "RemoveRecord");
    std::vector<SQelPropColumnData> record;
    Check(db.GetRecord(tables.at(1), 3, record), "GetRecord");
    Check(db.SetRecord(tables.at(0), 1, record), "SetRecord");
    Check(db.RenameTable(tables.at(2), L"\u00C4ndern"), "RenameTable");
}

bool Run(const std::string& command, const std::wstring& folder)
{
    if (command == "write")
        OnBoth(folder, true, false, FillNew<CQelTable, CQelPropDB>, FillNew<CQelTable3X, CQelPropDB3X>);
    else if (command == "change")
        OnBoth(folder, false, false, Change<CQelTable, CQelPropDB>, Change<CQelTable3X, CQelPropDB3X>);
    else if (command == "show") {
        OnBoth(folder, false, true, ShowContent<CQelTable, CQelPropDB>,
               ShowContent<CQelTable3X, CQelPropDB3X>);
        ShowRows(folder + L"/travels.db");
        ShowRows(folder + L"/travels.store");
    } else
        return false;
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    qel::PrepareStreams();
    const std::vector<std::string> arguments = qel::CommandLineArguments(argc, argv);
    try {
        if (arguments.size() == 2 && Run(arguments[0], qel::FromUtf8(arguments[1])))
            return 0;
        std::cerr << "usage: interchange write | change | show FOLDER\n";
    } catch (const std::exception& exception) {
        std::cerr << "interchange: " << exception.what() << "\n";
    }
    return 1;
}
