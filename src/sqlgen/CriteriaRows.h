#pragma once

#include <zephrin/ado/Recordset.h>

#include <QString>

#include <vector>

namespace zephrin {

/// A cell of the criteria sheet that holds text: its column, by index, and the text.
struct Criterion {
    int Field;
    QString Text;
    bool operator==(const Criterion&) const = default;
};

/// One row of the sheet, as the cells of it that hold text. Null and empty are the same here, and so two rows
/// are equal when they are equal cell by cell.
using CriteriaRow = std::vector<Criterion>;

/// A row of `sheet`, from 0, cut down to `fields`.
CriteriaRow ReadCriteriaRow(const ado::Recordset& sheet, qint64 row, const std::vector<int>& fields);

/// Indexes of all columns.
std::vector<int> AllFields(const ado::Recordset& sheet);

/// Which of `rows` are equal to an earlier one, by index and in ascending order.
std::vector<std::size_t> RepeatedRows(const std::vector<CriteriaRow>& rows);

}  // namespace zephrin
