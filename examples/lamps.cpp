// lamps.cpp: a whole host in forty lines; README.md shows it.
#include <qelprop4/qelprop4.h>

#include <iostream>

int main()
{
    CQelSQLite connection;
    connection.Open(L"lamps.db");
    CQelPropDB db(&connection);
    if (db.Attach(true, nullptr) != qel::kSuccess) // true: start anew
        return 1;

    CQelTable lamps;
    lamps.Properties().name = L"Lamps";
    lamps.Properties().columns.resize(2);
    lamps.Properties().columns[0].name = L"Name";
    lamps.Properties().columns[1].name = L"Price";
    lamps.Properties().columns[1].type = CQelProperty::eCurrency;
    db.AddTable(lamps);
    db.GetTable(lamps); // now the columns have their oids
    const unsigned long table = lamps.Properties().oid;

    std::vector<SQelPropColumnData> record = {{lamps.Columns()[0].oid, {}}, {lamps.Columns()[1].oid, {}}};
    const std::pair<const wchar_t*, double> stock[] = {{L"Desk lamp", 1249.5}, {L"Lantern", 80}};
    for (const auto& [name, price] : stock) {
        record[0].value.SetString(name);
        record[1].value.SetCurrency(price, L"EUR");
        unsigned long oid = 0; // the next free one
        db.AddRecord(table, oid, record, false);
    }

    std::vector<unsigned long> oids;
    const std::vector<CQelPropDB::SSortItem> dearestFirst = {{record[1].columnOid, false}};
    db.GetRecordOids(table, oids, &dearestFirst);
    for (const unsigned long oid : oids)
        if (db.GetRecord(table, oid, record) == qel::kSuccess)
            std::cout << record[0].value.StringUTF8() << ": " << record[1].value.StringUTF8() << "\n";
}
