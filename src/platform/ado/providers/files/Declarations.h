#pragma once

#include "platform/ado/providers/files/protocol/Protocol.h"

#include <QByteArray>

namespace zephrin::ado::files {

/// The statement that makes a table of these columns in the engine, whose dialect takes its types from it.
QByteArray TableDeclaration(const QString& name, const QList<ColumnInfo>& columns);
/// The statement that adds a row to it.
QByteArray RowInsertion(const QString& name, qsizetype columns);

}  // namespace zephrin::ado::files
