// transfer.cpp: tables first, then their references, then records.
#include "transfer.h"

#include <algorithm>

namespace tool {

CTransfer::CTransfer(CPropertyFile& target, const std::vector<CQelTable>& tables) : m_target(target)
{
    for (const CQelTable& table : tables)
        AddTable(table);
    for (const CQelTable& table : tables)
        WriteReferences(table);
}

void CTransfer::AddTable(const CQelTable& source)
{
    CQelTable table(source);
    for (CQelTable::SQelColumn& column : table.Properties().columns) {
        column.oid = 0;
        column.refTable = 0; // what it refers to may not be there yet
        column.refColumn = 0;
    }
    m_target.AddTable(table);
    SPlace& place = m_places[source.Properties().oid];
    place.table = table.Properties().oid;
    for (const CQelTable& made : m_target.Tables()) {
        if (made.Properties().oid != place.table)
            continue;
        for (const CQelTable::SQelColumn& column : made.Columns())
            place.columns.push_back(column.oid);
    }
    if (place.columns.size() != source.Columns().size())
        throw FailureOf(qel::kCannotChange, "", "a table was not made as it was asked for");
    for (std::size_t index = 0; index < place.columns.size(); ++index)
        place.columnOfSource[source.Columns()[index].oid] = place.columns[index];
}

void CTransfer::WriteReferences(const CQelTable& source)
{
    const SPlace& place = m_places.at(source.Properties().oid);
    for (std::size_t index = 0; index < place.columns.size(); ++index) {
        CQelTable::SQelColumn column = source.Columns()[index];
        if (column.refTable == 0 && column.refColumn == 0)
            continue;
        const auto table = m_places.find(column.refTable);
        if (table != m_places.end()) {
            column.refTable = table->second.table;
            const auto target = table->second.columnOfSource.find(column.refColumn);
            if (target != table->second.columnOfSource.end())
                column.refColumn = target->second;
        }
        column.oid = place.columns[index];
        column.displayOrder = static_cast<int>(index);
        m_target.ModifyColumn(place.table, column);
    }
}

void CTransfer::Put(unsigned long table, unsigned long recordOid, CRecord record)
{
    const SPlace& place = m_places.at(table);
    for (std::size_t index = 0; index < record.size() && index < place.columns.size(); ++index)
        record[index].columnOid = place.columns[index];
    const unsigned long given = m_target.AddRecord(place.table, record, recordOid);
    if (given != recordOid)
        throw FailureOf(qel::kCannotChange, "",
                        "record @" + std::to_string(recordOid) + " cannot be stored under its oid");
    ++m_records;
}

} // namespace tool
