// importer.h: puts records that were read into a table, as new ones or over those with the same key.
#pragma once

#include "record_source.h"
#include "reference_watch.h"

#include <string>
#include <unordered_map>

namespace tool {

/// The records of a table by the value of one column.
class CKeyIndex
{
public:
    /// Reads the column of every record.
    CKeyIndex(CPropertyFile& file, unsigned long tableOid, unsigned long columnOid);
    /// @return the record's oid; 0 for none; kSeveral where more than one has the value
    unsigned long Find(const CQelProperty& key) const;
    void Add(const CQelProperty& key, unsigned long recordOid);

    static constexpr unsigned long kSeveral = ~0UL;

private:
    std::unordered_map<std::string, unsigned long> m_records;
};

/// Writes records into one table and counts them. Nothing is committed here.
class CImporter
{
public:
    struct SRules
    {
        bool keyIsOid = false;       ///< a record of the same oid is written over
        unsigned long keyColumn = 0; ///< a record with the same value is written over; 0: none
        bool defaults = true;        ///< columns that a new record does not name get theirs
    };

    /// @param file, table  outlive the importer
    CImporter(CPropertyFile& file, const CQelTable& table, const SRules& rules);
    /// @throws SFailure  4, with the record's line, for one that cannot be taken; the file is then unchanged
    void Put(SSourceRecord& record);

    unsigned long long Added() const { return m_added; }
    unsigned long long Replaced() const { return m_replaced; }
    /// References of the records put that lead to no record by now.
    unsigned long long Dangling() { return m_references.Dangling(); }

private:
    const CQelProperty* KeyOf(const SSourceRecord& record) const;
    unsigned long Match(const SSourceRecord& record) const;
    void Add(SSourceRecord& record);

    CPropertyFile& m_file;
    const CQelTable& m_table;
    SRules m_rules;
    std::unique_ptr<CKeyIndex> m_keys;
    CReferenceWatch m_references;
    unsigned long long m_added = 0;
    unsigned long long m_replaced = 0;
};

} // namespace tool
