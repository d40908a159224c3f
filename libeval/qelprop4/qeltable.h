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
        unsigned long oid = 0;                            ///< 0 until a database gives it one
        CQelProperty::EType type = CQelProperty::eString; ///< what its values are meant to be
        std::wstring name;                                ///< see the databases' IsValidName
        std::wstring description;                         ///< any text
        unsigned long refTable = 0;                       ///< of a Reference column: the table it points into
        unsigned long refColumn = 0;                      ///< of a Reference column: the column there
        CQelProperty defaultValue;                        ///< stored; put into no record by a database
        unsigned int displayHint = 1;                     ///< a number of the host's
        std::wstring format;                              ///< as CQelProperty::String takes it
        std::wstring currency;                            ///< a symbol
        int displayOrder = 0;                             ///< place among the columns, from 0
    };

    /// All that a table is.
    struct SData
    {
        unsigned long oid = 0;           ///< 0 until a database gives it one
        std::wstring name;               ///< see the databases' IsValidName
        std::wstring description;        ///< any text
        std::vector<SQelColumn> columns; ///< in the order in which the database or the caller placed them
        bool flag = false;               ///< set on every table that comes from a catalogue; not stored
    };

    /// An empty table, for example to ask a database for the one with this oid.
    CQelTable(unsigned long oid = 0); // not explicit: hosts make structures that hold tables by {}
    /// Copies everything, or nothing when memory runs out.
    /// @{
    CQelTable(const CQelTable& other);
    CQelTable(CQelTable&& other) noexcept;
    const CQelTable& operator=(const CQelTable& other);
    const CQelTable& operator=(CQelTable&& other) noexcept;
    /// @}
    ~CQelTable() override;

    /// The table's parts, to read and to fill; the reference lives as long as the table.
    /// @{
    SData& Properties() { return m_data; }
    const SData& Properties() const { return m_data; }
    /// @}
    /// The columns in the order in which the database or the caller placed them.
    const std::vector<SQelColumn>& Columns() const { return m_data.columns; }

    /// Copies the first column with this oid to `out`.
    /// @return false, leaving `out`, when there is none
    bool GetColumn(unsigned long columnOid, SQelColumn& out) const;

    /// Finds the first element of a record that belongs to a column.
    /// @param it  out: the element, or the record's end; unchanged when the record is empty
    /// @return whether there is one
    static bool GetColumnData(unsigned long columnOid, const std::vector<SQelPropColumnData>& record,
                              std::vector<SQelPropColumnData>::const_iterator& it);
    /// The same for a record that may be changed; `it` becomes the end for an empty record, too.
    static bool GetColumnData(unsigned long columnOid, std::vector<SQelPropColumnData>& record,
                              std::vector<SQelPropColumnData>::iterator& it);

private:
    SData m_data;
};
