// schema_record_fuzz.cpp: any bytes as the schema record of a legacy database.
#include <qellib4/qelexception.h>
#include <qellib4/qelmemfile.h>

#include "libeval/qelpropdb3x/schema_codec.h"

#include <cstdint>
#include <cstdlib>

namespace {

// Reads and gives whether the bytes were a schema, wrong checksum or not; any other end is a finding.
bool IsRead(CQelMemFile& file, qel::TLegacyTables& tables)
{
    try {
        qel::ReadSchema(file, tables);
        return true;
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        exception->Delete();
        if (code != 10011)
            std::abort();
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CQelMemFile file(false, 4096, 4096);
    file.Write(data, static_cast<unsigned int>(size));
    file.Rewind();
    qel::TLegacyTables tables;
    const bool whole = IsRead(file, tables);
    for (const auto& table : tables) {
        int order = 0;
        for (const CQelTable3X::SQelColumn& column : table.second.Columns()) {
            if (column.displayOrder != order++ || column.dataIndex < 0)
                std::abort();
        }
    }
    if (!whole)
        return 0;
    // What was read is written and reads back alike.
    CQelMemFile again(false, 4096, 4096);
    qel::WriteSchema(again, tables);
    again.Rewind();
    qel::TLegacyTables copy;
    if (!qel::ReadSchema(again, copy) || copy.size() != tables.size())
        std::abort();
    return 0;
}
