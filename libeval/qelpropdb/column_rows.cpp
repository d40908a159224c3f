// column_rows.cpp: how a column definition is written.
#include "column_rows.h"

#include "../value/encoding.h"

namespace qel {
namespace {

constexpr const wchar_t* kInsert =
    L"INSERT INTO qeltpc (toid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo) "
    L"VALUES (?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11)";
constexpr const wchar_t* kInsertLast =
    L"INSERT INTO qeltpc (toid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo) "
    L"VALUES (?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,"
    L"(SELECT IFNULL(MAX(cdo)+1,0) from qeltpc where toid = ?1))";
constexpr const wchar_t* kInsertWithOid =
    L"INSERT INTO qeltpc (oid,toid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo) "
    L"VALUES (?99,?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11)";
constexpr const wchar_t* kInsertWithOidLast =
    L"INSERT INTO qeltpc (oid,toid,ctype,cname,cdesc,crtt,crtc,cdef,cdisph,cformat,ccur,cdo) "
    L"VALUES (?99,?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,"
    L"(SELECT IFNULL(MAX(cdo)+1,0) from qeltpc where toid = ?1))";
constexpr const wchar_t* kUpdate =
    L"UPDATE qeltpc SET ctype=?3, cname=?4, cdesc=?5, crtt=?6, crtc=?7, cdef=?8, cdisph=?9, "
    L"cformat=?10, ccur=?11, cdo=?12 WHERE toid=?1 AND oid=?2";

} // namespace

const wchar_t* InsertColumnText(bool withOid, bool displayLast)
{
    if (withOid)
        return displayLast ? kInsertWithOidLast : kInsertWithOid;
    return displayLast ? kInsertLast : kInsert;
}

const wchar_t* UpdateColumnText()
{
    return kUpdate;
}

int BindColumn(CQelSQLite::CStatement& statement, int first, const CQelTable::SQelColumn& column)
{
    TavBlob defaultValue;
    EncodeInto(defaultValue, column.defaultValue);
    int next = first;
    statement.BindInt(next++, column.type);
    statement.BindString(next++, column.name);
    statement.BindString(next++, column.description);
    statement.BindInt(next++, static_cast<long long>(column.refTable));
    statement.BindInt(next++, static_cast<long long>(column.refColumn));
    statement.BindBlob(next++, &defaultValue);
    statement.BindInt(next++, column.displayHint);
    statement.BindString(next++, column.format);
    statement.BindString(next++, column.currency);
    return next;
}

bool HasOidReferences(const CQelTable::SQelColumn& column)
{
    return IsOid(column.refTable) && IsOid(column.refColumn);
}

} // namespace qel
