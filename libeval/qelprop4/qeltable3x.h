// qeltable3x.h: the definition of one table of the legacy database.
#pragma once

#include <qelprop4/qeltable.h>

/// As CQelTable, with a slot number in every column.
class QELPROP4_API CQelTable3X : public CQelBase
{
public:
    /// One column of a legacy table.
    struct SQelColumn : CQelTable::SQelColumn
    {
        int dataIndex = -1; ///< slot of the column in every stored record; -1: not yet assigned
    };

    /// All that a legacy table is.
    struct SData
    {
        unsigned long oid = 0;           ///< 0 until a database gives it one
        std::wstring name;               ///< see CQelPropDB3X::IsValidName
        std::wstring description;        ///< any text
        std::vector<SQelColumn> columns; ///< in display order when the table comes from a database
        bool flag = false;               ///< stored by the legacy database
    };

    /// An empty table, for example to ask a database for the one with this oid.
    CQelTable3X(unsigned long oid = 0); // not explicit, as CQelTable
    /// Copies everything, or nothing when memory runs out.
    /// @{
    CQelTable3X(const CQelTable3X& other);
    CQelTable3X(CQelTable3X&& other) noexcept;
    const CQelTable3X& operator=(const CQelTable3X& other);
    const CQelTable3X& operator=(CQelTable3X&& other) noexcept;
    /// @}
    ~CQelTable3X() override;

    /// The table's parts, to read and to fill; the reference lives as long as the table.
    /// @{
    SData& Properties() { return m_data; }
    const SData& Properties() const { return m_data; }
    /// @}
    /// The columns in display order when the table comes from a database.
    const std::vector<SQelColumn>& Columns() const { return m_data.columns; }

    /// Copies the first column with this oid to `out`.
    /// @return false, leaving `out`, when there is none
    bool GetColumn(unsigned long columnOid, SQelColumn& out) const;

    /// Finds the first element of a record that belongs to a column.
    /// @param it  out: the element, or the record's end; unchanged when the record is empty
    /// @return whether there is one
    bool GetColumnData(unsigned long columnOid, const std::vector<SQelPropColumnData>& record,
                       std::vector<SQelPropColumnData>::const_iterator& it) const;
    /// The same for a record that may be changed; `it` becomes the end for an empty record, too.
    bool GetColumnData(unsigned long columnOid, std::vector<SQelPropColumnData>& record,
                       std::vector<SQelPropColumnData>::iterator& it) const;

private:
    SData m_data;
};
