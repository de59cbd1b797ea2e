#pragma once

#include "savedquery/QueryFiles.h"

namespace zephrin {

/// The rows of a file in a recordset with the columns of `present`. A file that can't be read, lacks a column
/// or holds what a column refuses gives a recordset of these columns that is closed.
ado::RecordsetPtr RestoreRows(QueryFiles& files, const QString& path, const ado::RecordsetPtr& present);

/// The criteria of a file: its own columns, as criteria columns. Closed and without columns where it can't be
/// read.
ado::RecordsetPtr RestoreCriteria(QueryFiles& files, const QString& path);

}  // namespace zephrin
