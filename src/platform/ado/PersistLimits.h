#pragma once

#include <QByteArray>
#include <QString>

namespace zephrin::ado {

/// Looks over a saved recordset for what the XML reader would take too long over or too much memory for,
/// before the reader sees it, in one pass over the bytes: a document type, a tag that is too long, too many
/// namespaces, or tags of so many attributes that comparing each with each takes longer than reading so many
/// bytes may.
///
/// Returns what is wrong, or nothing. `line` then tells where. Takes texts in UTF-8 and encodings that agree
/// with it on ASCII.
QString FindExcess(const QByteArray& xml, qint64& line);

}  // namespace zephrin::ado
