// display_order.h: columns, and the values that belong to them, in the order in which people see them.
#pragma once

#include <qelprop4/qelprop4.h>

#include <algorithm>
#include <vector>

namespace tool {

/// Sorts columns by display order; columns of the same order keep theirs.
template <class Column>
void SortByDisplayOrder(std::vector<Column>& columns)
{
    std::stable_sort(columns.begin(), columns.end(),
                     [](const Column& a, const Column& b) { return a.displayOrder < b.displayOrder; });
}

/// Makes display orders 0, 1, 2 ... in the order in which the columns stand.
template <class Column>
void NumberInOrder(std::vector<Column>& columns)
{
    int next = 0;
    for (Column& column : columns)
        column.displayOrder = next++;
}

/// Moves the column to a position counted from 0; beyond the end is the end, an unknown oid moves nothing.
template <class Column>
void MoveTo(std::vector<Column>& columns, unsigned long columnOid, std::size_t position)
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [=](const Column& column) { return column.oid == columnOid; });
    if (found == columns.end())
        return;
    const auto from = static_cast<std::size_t>(found - columns.begin());
    const auto to = std::min(position, columns.size() - 1);
    const auto at = [&](std::size_t index) { return columns.begin() + static_cast<std::ptrdiff_t>(index); };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
}

/// Puts one value per column, in the columns' order, into the record; null for a column that it does not
/// name.
template <class Column>
void SortLike(const std::vector<Column>& columns, std::vector<SQelPropColumnData>& record)
{
    std::size_t place = 0;
    for (const Column& column : columns) {
        if (place < record.size() && record[place].columnOid == column.oid) {
            ++place;
            continue;
        }
        const auto rest = record.begin() + static_cast<std::ptrdiff_t>(place);
        const auto found = std::find_if(
            rest, record.end(), [&](const SQelPropColumnData& data) { return data.columnOid == column.oid; });
        if (found == record.end())
            record.insert(rest, SQelPropColumnData{column.oid, {}});
        else
            std::iter_swap(rest, found);
        ++place;
    }
    record.resize(place);
}

} // namespace tool
