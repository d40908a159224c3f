// importer.cpp: looks for the record that is meant, then writes.
#include "importer.h"

#include "names/assignment.h"
#include "value_parts.h"

namespace tool {

CKeyIndex::CKeyIndex(CPropertyFile& file, unsigned long tableOid, unsigned long columnOid)
{
    CRecord record;
    for (const unsigned long oid : file.RecordOids(tableOid)) {
        CRecord::const_iterator key;
        if (file.GetRecord(tableOid, oid, record) && CQelTable::GetColumnData(columnOid, record, key))
            Add(key->value, oid);
    }
}

unsigned long CKeyIndex::Find(const CQelProperty& key) const
{
    const auto found = m_records.find(StoredBytes(key));
    return found == m_records.end() ? 0 : found->second;
}

void CKeyIndex::Add(const CQelProperty& key, unsigned long recordOid)
{
    if (key.IsNull())
        return; // what is unknown is the same as nothing
    const auto [place, isNew] = m_records.emplace(StoredBytes(key), recordOid);
    if (!isNew && place->second != recordOid)
        place->second = kSeveral;
}

CImporter::CImporter(CPropertyFile& file, const CQelTable& table, const SRules& rules)
    : m_file(file), m_table(table), m_rules(rules), m_references(file, table)
{
    if (rules.keyColumn != 0)
        m_keys = std::make_unique<CKeyIndex>(file, table.Properties().oid, rules.keyColumn);
}

const CQelProperty* CImporter::KeyOf(const SSourceRecord& record) const
{
    CRecord::const_iterator key;
    if (!record.values.empty() && CQelTable::GetColumnData(m_rules.keyColumn, record.values, key) &&
        key != record.values.end())
        return &key->value;
    return nullptr;
}

unsigned long CImporter::Match(const SSourceRecord& record) const
{
    if (m_rules.keyIsOid)
        return record.oid != 0 && m_file.HasRecord(m_table.Properties().oid, record.oid) ? record.oid : 0;
    if (m_keys == nullptr)
        return 0;
    const CQelProperty* key = KeyOf(record);
    if (key == nullptr)
        throw LineFailure(EExit::eRefused, record.line, "the record has no value for the key");
    const unsigned long oid = m_keys->Find(*key);
    if (oid == CKeyIndex::kSeveral)
        throw LineFailure(EExit::eRefused, record.line, "several records have this key");
    return oid;
}

void CImporter::Add(SSourceRecord& record)
{
    const unsigned long tableOid = m_table.Properties().oid;
    if (record.oid != 0 && m_file.HasRecord(tableOid, record.oid))
        throw LineFailure(EExit::eRefused, record.line,
                          "there is a record @" + std::to_string(record.oid) + " already",
                          "--key @oid writes over it, --new-oids adds another record");
    if (m_rules.defaults)
        AddDefaults(m_table, record.values);
    const unsigned long oid = m_file.AddRecord(tableOid, record.values, record.oid);
    if (m_keys != nullptr)
        m_keys->Add(*KeyOf(record), oid);
    ++m_added;
}

void CImporter::Put(SSourceRecord& record)
{
    if (record.refusal)
        throw *record.refusal;
    const unsigned long oid = Match(record);
    if (oid == 0) {
        Add(record);
    } else {
        m_file.SetRecord(m_table.Properties().oid, oid, record.values);
        ++m_replaced;
    }
    m_references.See(record.values);
}

} // namespace tool
