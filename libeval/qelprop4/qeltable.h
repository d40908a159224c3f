// qeltable.h: the definition of one table, as the SQLite database hands it out and takes it in.
#pragma once

#include <qellib4/qelbase.h>
#include <qelprop4/propdbtypes.h>

#include <string>
#include <vector>

/// A table's oid, name, description and columns; a plain value without a link to a database.
class QELPROP4_API CQelTable : public CQelBase
{
public:
    /// One column. Display hint, format and currency belong to the host and are only stored.
    struct SQelColumn
    {
        unsigned long oid = 0;
        CQelProperty::EType type = CQelProperty::eString;
        std::wstring name;
        std::wstring description;
        unsigned long refTable = 0;  ///< of a Reference column: the table that it points into
        unsigned long refColumn = 0; ///< of a Reference column: the column in that table
        CQelProperty defaultValue;
        unsigned int displayHint = 1;
        std::wstring format;
        std::wstring currency;
        int displayOrder = 0;
    };

    struct SData
    {
        unsigned long oid = 0;
        std::wstring name;
        std::wstring description;
        std::vector<SQelColumn> columns;
        bool flag = false; ///< set on every table that comes from a catalogue; not stored
    };

    explicit CQelTable(unsigned long oid = 0);
    CQelTable(const CQelTable& other);
    CQelTable(CQelTable&& other) noexcept;
    const CQelTable& operator=(const CQelTable& other);
    const CQelTable& operator=(CQelTable&& other) noexcept;
    ~CQelTable() override;

    SData& Properties() { return m_data; }
    const SData& Properties() const { return m_data; }
    /// The columns in the order in which the database or the caller placed them.
    const std::vector<SQelColumn>& Columns() const { return m_data.columns; }

    /// Copies the first column with this oid to `out`. @return false, leaving `out`, when there is none
    bool GetColumn(unsigned long columnOid, SQelColumn& out) const;

    /// Finds the first element of a record that belongs to a column.
    /// @param it  out: the element, or the record's end; unchanged when the record is empty
    static bool GetColumnData(unsigned long columnOid, const std::vector<SQelPropColumnData>& record,
                              std::vector<SQelPropColumnData>::const_iterator& it);
    /// The same for a record that may be changed; `it` becomes the end for an empty record, too.
    static bool GetColumnData(unsigned long columnOid, std::vector<SQelPropColumnData>& record,
                              std::vector<SQelPropColumnData>::iterator& it);

private:
    SData m_data;
};
