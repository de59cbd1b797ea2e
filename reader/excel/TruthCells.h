#pragma once

#include <QHash>
#include <QString>

namespace zephrin::reader::excel {

/// The cells of one sheet that hold True or False, by row * 65536 + column.
using TruthCells = QHash<quint32, bool>;

/// Those of an old workbook (97 to 2003), by the names of its sheets. The library that reads such a workbook
/// has no word for them and calls them empty.
QHash<QString, TruthCells> FindTruthCells(const QString& path);

}  // namespace zephrin::reader::excel
