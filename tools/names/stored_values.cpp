// stored_values.cpp: counts what is there, record by record.
#include "stored_values.h"

#include <algorithm>

namespace tool {

unsigned long long CountValues(const CRecord& record, unsigned long column)
{
    return static_cast<unsigned long long>(
        std::count_if(record.begin(), record.end(), [=](const SQelPropColumnData& data) {
            return !data.value.IsNull() && (column == 0 || data.columnOid == column);
        }));
}

bool ReadIfWhole(CPropertyFile& file, unsigned long table, unsigned long oid, CRecord& record)
{
    try {
        return file.GetRecord(table, oid, record);
    } catch (const SFailure& failure) {
        if (failure.exit != EExit::eFaults)
            throw;
        record.clear();
        return true;
    }
}

SStored CountStored(CContext& context, CPropertyFile& file, unsigned long table, unsigned long column)
{
    SStored stored;
    CRecord record;
    for (const unsigned long oid : file.RecordOids(table)) {
        context.CheckInterrupt();
        if (!ReadIfWhole(file, table, oid, record))
            continue;
        ++stored.records;
        stored.values += CountValues(record, column);
    }
    return stored;
}

} // namespace tool
