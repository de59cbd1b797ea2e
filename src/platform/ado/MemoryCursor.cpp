#include "platform/ado/MemoryCursor.h"

#include "platform/ado/ColumnStore.h"

#include <algorithm>

namespace zephrin::ado {

namespace {

void Append(const QVariant& cell, ColumnStore& into, int column) {
    if (!cell.isValid()) return into.AppendNull(column);
    if (cell.typeId() == QMetaType::Bool) return into.AppendInt(column, cell.toBool() ? -1 : 0);
    if (cell.typeId() != QMetaType::QString) return into.AppendInt(column, cell.toLongLong());
    const QByteArray utf8 = cell.toString().toUtf8();
    into.AppendText(column, utf8.constData(), utf8.size());
}

}  // namespace

qint64 MemoryCursor::Fetch(ColumnStore& into, qint64 maxRows) {
    const size_t end = std::min(rows.size(), next + size_t(maxRows));
    const auto count = qint64(end - next);
    for (; next < end; ++next)
        for (int column = 0; column < fields.size(); ++column)
            Append(rows[next][size_t(column)], into, column);
    if (count > 0) into.EndRows(count);
    return count;
}

}  // namespace zephrin::ado
