// value_check.cpp: a value against its column.
#include "value_check.h"

#include "exchange/type_name.h"
#include "exchange/value_parts.h"

namespace tool {
namespace {

bool EndsWithZero(std::string_view bytes)
{
    return bytes.size() >= 2 && bytes.size() % 2 == 0 && bytes[bytes.size() - 1] == '\0' &&
           bytes[bytes.size() - 2] == '\0';
}

} // namespace

void CValueCheck::Check(const CQelTable& table, const CQelTable::SQelColumn& column, unsigned long recordOid,
                        const CQelProperty& value)
{
    const auto add = [&](const char* kind, const std::string& message) {
        m_findings.Add({kind, Utf8(table.Properties().name), recordOid, Utf8(column.name), message});
    };
    const CQelProperty::EType type = value.GetType();
    if (type == CQelProperty::eNull)
        return;
    if (type != column.type)
        add("type",
            "the value is of type " + TypeName(type) + ", the column of type " + TypeName(column.type));
    if (IsTextType(type) && !EndsWithZero(BufferOf(value)))
        add("text", "the text has no end");
    if (type != CQelProperty::eReference || column.refTable == 0)
        return;
    const unsigned long target = value.Data().uValue.nULong;
    if (!m_file.HasRecord(column.refTable, target))
        add("dangling", "refers to record @" + std::to_string(target) + ", which is not there");
}

} // namespace tool
