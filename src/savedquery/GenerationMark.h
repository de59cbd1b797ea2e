#pragma once

#include <QByteArray>

namespace zephrin {

/// All files of one save end with the same mark, and no other save has it: so files of two saves are told
/// apart. It is an instruction of XML behind the rows, which readers of recordsets pass over.

/// A mark that nothing has yet.
QByteArray NewMark();

QByteArray WithMark(const QByteArray& xml, const QByteArray& mark);

/// The mark of a file; empty where it was saved without one.
QByteArray MarkOf(const QByteArray& file);

}  // namespace zephrin
