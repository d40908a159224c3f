// legacy_record_fuzz.cpp: any bytes as a record of a legacy table with columns of every type.
#include "reading.h"

#include <qellib4/tavblob.h>

#include "libeval/qelpropdb3x/record_codec.h"

#include <cstdint>
#include <cstdlib>

namespace {

// Columns in slots of their own, two that share one, and one whose slot lies outside every record.
CQelTable3X Table()
{
    CQelTable3X table(1000);
    const int slots[] = {0, 1, 2, 3, 3, 77};
    for (const int slot : slots) {
        CQelTable3X::SQelColumn column;
        column.oid = table.Columns().size() + 1;
        column.dataIndex = slot;
        table.Properties().columns.push_back(column);
    }
    return table;
}

bool IsRead(const TavBlob& bytes, const CQelTable3X& table, std::vector<SQelPropColumnData>& values)
{
    qel::NameValues(table, values);
    return qelfuzz::IsRead([&] { qel::ReadSlots(bytes, table, values); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const CQelTable3X table = Table();
    TavBlob bytes;
    bytes.SetData(data, static_cast<unsigned int>(size));
    std::vector<SQelPropColumnData> values;
    if (!IsRead(bytes, table, values))
        return 0;
    if (values.size() != 6 || !values[4].value.IsNull() || !values[5].value.IsNull())
        std::abort(); // slots that no column owns
    // What was read is written, and reading that changes nothing any more.
    qel::TSlots slots;
    for (const SQelPropColumnData& element : values)
        slots.push_back(&element.value);
    TavBlob written;
    qel::WriteSlots(written, slots);
    std::vector<SQelPropColumnData> again;
    if (!IsRead(written, table, again))
        std::abort();
    return 0;
}
