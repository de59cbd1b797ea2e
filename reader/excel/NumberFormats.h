#pragma once

#include "reader/excel/Sheet.h"

#include <QStringView>

namespace zephrin::reader::excel {

/// What a number is that is shown in this format: a date or time, money, or a number.
CellKind KindOfFormat(QStringView code);
/// The same of the formats that have a number instead of a code.
CellKind KindOfFormat(int number);

}  // namespace zephrin::reader::excel
