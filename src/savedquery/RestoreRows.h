#pragma once

#include <zephrin/ado/Recordset.h>

#include <memory>

namespace zephrin {

/// The rows of a file in a recordset with the columns of `present`. Rows that lack a column or hold what a
/// column refuses, and none at all (null), give a recordset of these columns that is closed.
std::shared_ptr<ado::Recordset> RestoreRows(ado::Recordset* saved, const ado::Recordset& present);

/// The criteria of a file: its own columns, as criteria columns. Closed and without columns where there are
/// none.
std::shared_ptr<ado::Recordset> RestoreCriteria(ado::Recordset* saved);

}  // namespace zephrin
