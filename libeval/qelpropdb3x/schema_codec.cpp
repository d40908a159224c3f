// schema_codec.cpp: the bytes of the table schema record.
//
//   schema := version:u16 = 1, count:u32, table*, crc:u32 over all before it
//   table  := version:u16 = 4, oid:u32, name:text, description:text, count:u32, column*,
//             flag:bool (from version 2)
//   column := oid:u32, type:i32, name:text, description:text, refTable:u32, refColumn:u32, default:value,
//             hint:u32, format:text, currency:text, displayOrder:i32 (from version 3),
//             dataIndex:i32 (from version 4)
#include "schema_codec.h"

#include <qellib4/qelfile.h>

#include <algorithm>
#include <utility>

namespace qel {
namespace {

using SColumn = CQelTable3X::SQelColumn;

constexpr unsigned short kSchemaVersion = 1;
constexpr unsigned short kTableVersion = 4;
constexpr unsigned short kFirstWithFlag = 2;
constexpr unsigned short kFirstWithDisplayOrder = 3;
constexpr unsigned short kFirstWithDataIndex = 4;

void WriteColumn(CQelFile& file, const SColumn& column)
{
    file << column.oid << static_cast<int>(column.type) << column.name << column.description
         << column.refTable << column.refColumn;
    file << column.defaultValue << column.displayHint << column.format << column.currency
         << column.displayOrder << column.dataIndex;
}

// A number that the entry's version lacks, or that is negative, is the column's place among the stored ones.
int ReadPlace(CQelFile& file, bool present, unsigned int position)
{
    int place = -1;
    if (present)
        file >> place;
    return place < 0 ? static_cast<int>(position) : place;
}

SColumn ReadColumn(CQelFile& file, unsigned short version, unsigned int position)
{
    SColumn column;
    int type = 0;
    file >> column.oid >> type >> column.name >> column.description >> column.refTable >> column.refColumn;
    column.type = static_cast<CQelProperty::EType>(type);
    file >> column.defaultValue >> column.displayHint >> column.format >> column.currency;
    column.displayOrder = ReadPlace(file, version >= kFirstWithDisplayOrder, position);
    column.dataIndex = ReadPlace(file, version >= kFirstWithDataIndex, position);
    return column;
}

void SortByDisplayOrder(std::vector<SColumn>& columns)
{
    std::stable_sort(columns.begin(), columns.end(),
                     [](const SColumn& a, const SColumn& b) { return a.displayOrder < b.displayOrder; });
    int position = 0;
    for (SColumn& column : columns)
        column.displayOrder = position++;
}

std::vector<const SColumn*> InOrderOfOids(const std::vector<SColumn>& columns)
{
    std::vector<const SColumn*> sorted;
    sorted.reserve(columns.size());
    for (const SColumn& column : columns)
        sorted.push_back(&column);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const SColumn* a, const SColumn* b) { return a->oid < b->oid; });
    return sorted;
}

} // namespace

void WriteTable(CQelFile& file, const CQelTable3X& table)
{
    const CQelTable3X::SData& data = table.Properties();
    file << kTableVersion << data.oid << data.name << data.description
         << static_cast<unsigned int>(data.columns.size());
    for (const SColumn* column : InOrderOfOids(data.columns))
        WriteColumn(file, *column);
    file << data.flag;
}

void ReadTable(CQelFile& file, CQelTable3X& table)
{
    CQelTable3X::SData& data = table.Properties();
    data.columns.clear();
    unsigned short version = 0;
    unsigned int count = 0;
    file >> version >> data.oid >> data.name >> data.description >> count;
    // No room is made for the count: it is believed only as far as the bytes go.
    for (unsigned int position = 0; position < count; ++position)
        data.columns.push_back(ReadColumn(file, version, position));
    data.flag = false;
    if (version >= kFirstWithFlag)
        file >> data.flag;
    SortByDisplayOrder(data.columns);
}

void WriteSchema(CQelFile& file, const TLegacyTables& tables)
{
    file.BeginCheckSum();
    file << kSchemaVersion << static_cast<unsigned int>(tables.size());
    for (const auto& entry : tables)
        WriteTable(file, entry.second);
    file.WriteCheckSum();
}

bool ReadSchema(CQelFile& file, TLegacyTables& tables)
{
    file.BeginCheckSum();
    unsigned short version = 0; // read and not looked at
    unsigned int count = 0;
    file >> version >> count;
    for (unsigned int i = 0; i < count; ++i) {
        CQelTable3X table;
        ReadTable(file, table);
        const unsigned long oid = table.Properties().oid;
        tables.try_emplace(oid, std::move(table));
    }
    const unsigned long computed = file.EndCheckSum();
    unsigned long stored = 0;
    file >> stored;
    return stored == computed;
}

} // namespace qel
