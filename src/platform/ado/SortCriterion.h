#pragma once

#include "platform/ado/FieldList.h"
#include "platform/ado/RowOrder.h"

#include <vector>

namespace zephrin::ado {

/// Reads an order as Recordset::SetSort takes it. Throws 3001 for what is no order, 3265 for a column that
/// isn't there.
std::vector<SortKey> ReadSortCriterion(const QString& criterion, const FieldList& fields);

}  // namespace zephrin::ado
