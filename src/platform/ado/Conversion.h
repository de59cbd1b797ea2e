#pragma once

#include <zephrin/ado/Recordset.h>

namespace zephrin::ado {

/// `value` as the column `field` holds it: a QString of no more than the defined size in a text column, a
/// whole number in range in an integer column, the exact digits as QString in a decimal or currency column,
/// and so on. An invalid value is Null and suits every column. Throws ErrorNumber::ValueRefused for what the
/// column cannot hold unchanged.
QVariant Converted(const QVariant& value, const Field& field);

}  // namespace zephrin::ado
