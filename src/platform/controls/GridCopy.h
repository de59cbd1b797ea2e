#pragma once

#include <QItemSelectionModel>
#include <QString>

namespace zephrin::controls {

class RecordsetModel;

/// The selected cells as text, whole where the screen shows them cut: a tab between columns, CR LF between
/// rows. One cell alone is copied as it stands; among several, a text with tabs, breaks or quotes is quoted
/// as spreadsheets do. Cells within the block that are not selected are empty.
QString CopyText(const RecordsetModel& records, const QItemSelectionModel& selection);

}  // namespace zephrin::controls
