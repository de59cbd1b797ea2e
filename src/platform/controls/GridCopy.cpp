#include "platform/controls/GridCopy.h"

#include "platform/controls/RecordsetModel.h"

#include <limits>
#include <set>
#include <utility>

namespace zephrin::controls {

namespace {

QString Quoted(const QString& text) {
    const bool plain =
        !text.contains(u'\t') && !text.contains(u'\n') && !text.contains(u'\r') && !text.contains(u'"');
    if (plain) return text;
    QString doubled = text;
    doubled.replace(u'"', QStringLiteral("\"\""));
    return u'"' + doubled + u'"';
}

QString WholeText(const RecordsetModel& records, int row, int column) {
    return records.Source()->TextAt(row, column, std::numeric_limits<qsizetype>::max());
}

struct Block {
    int Top = std::numeric_limits<int>::max(), Bottom = -1;
    std::set<int> Columns;
};

/// The rows from the first selected to the last, and every column in which something is selected.
Block BlockOf(const RecordsetModel& records, const QItemSelection& ranges) {
    Block block;
    for (const QItemSelectionRange& range : ranges) {
        block.Top = std::min(block.Top, range.top());
        // The row for adding has nothing to copy.
        block.Bottom = std::max(block.Bottom, std::min(range.bottom(), records.RecordRows() - 1));
        for (int column = range.left(); column <= range.right(); ++column) block.Columns.insert(column);
    }
    return block;
}

bool IsSelected(const QItemSelection& ranges, int row, int column) {
    for (const QItemSelectionRange& range : ranges)
        if (range.contains(row, column, {})) return true;
    return false;
}

bool HasSelection(const QItemSelection& ranges, int row) {
    for (const QItemSelectionRange& range : ranges)
        if (range.top() <= row && row <= range.bottom()) return true;
    return false;
}

}  // namespace

QString CopyText(const RecordsetModel& records, const QItemSelectionModel& selection) {
    const QItemSelection ranges = selection.selection();
    const Block block = BlockOf(records, ranges);
    if (block.Bottom < block.Top) return {};
    if (block.Top == block.Bottom && block.Columns.size() == 1)
        return WholeText(records, block.Top, *block.Columns.begin());
    QString text;
    bool first = true;
    for (int row = block.Top; row <= block.Bottom; ++row) {
        if (!HasSelection(ranges, row)) continue;
        if (!std::exchange(first, false)) text += QLatin1StringView("\r\n");
        for (auto column = block.Columns.begin(); column != block.Columns.end(); ++column) {
            if (column != block.Columns.begin()) text += u'\t';
            if (IsSelected(ranges, row, *column)) text += Quoted(WholeText(records, row, *column));
        }
    }
    return text;
}

}  // namespace zephrin::controls
