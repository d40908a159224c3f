// qeltable3x.h: the definition of one table of the legacy database.
#pragma once

#include <qelprop4/qeltable.h>

/// As CQelTable, with a slot number in every column.
class QELPROP4_API CQelTable3X : public CQelBase
{
public:
    struct SQelColumn : CQelTable::SQelColumn
    {
        int dataIndex = -1; ///< slot of the column in every stored record; -1: not yet assigned
    };

    struct SData
    {
        unsigned long oid = 0;
        std::wstring name;
        std::wstring description;
        std::vector<SQelColumn> columns;
        bool flag = false; ///< stored by the legacy database
    };

    explicit CQelTable3X(unsigned long oid = 0);
    CQelTable3X(const CQelTable3X& other);
    CQelTable3X(CQelTable3X&& other) noexcept;
    const CQelTable3X& operator=(const CQelTable3X& other);
    const CQelTable3X& operator=(CQelTable3X&& other) noexcept;
    ~CQelTable3X() override;

    SData& Properties() { return m_data; }
    const SData& Properties() const { return m_data; }
    /// The columns in display order when the table comes from a database.
    const std::vector<SQelColumn>& Columns() const { return m_data.columns; }

    /// Copies the first column with this oid to `out`. @return false, leaving `out`, when there is none
    bool GetColumn(unsigned long columnOid, SQelColumn& out) const;

    /// Finds the first element of a record that belongs to a column.
    /// @param it  out: the element, or the record's end; unchanged when the record is empty
    bool GetColumnData(unsigned long columnOid, const std::vector<SQelPropColumnData>& record,
                       std::vector<SQelPropColumnData>::const_iterator& it) const;
    /// The same for a record that may be changed; `it` becomes the end for an empty record, too.
    bool GetColumnData(unsigned long columnOid, std::vector<SQelPropColumnData>& record,
                       std::vector<SQelPropColumnData>::iterator& it) const;

private:
    SData m_data;
};
