// schema_record_fuzz.cpp: any bytes as the schema record of a legacy database.
#include "reading.h"

#include <qellib4/qelmemfile.h>

#include "libeval/qelpropdb3x/schema_codec.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CQelMemFile file(false, 4096, 4096);
    file.Write(data, static_cast<unsigned int>(size));
    file.Rewind();
    qel::TLegacyTables tables;
    const bool whole = qelfuzz::IsRead([&] { qel::ReadSchema(file, tables); }); // its checksum wrong or not
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
