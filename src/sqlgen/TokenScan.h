#pragma once

#include <QString>
#include <QStringList>

namespace zephrin {

/// Appends `cell` to `text`, with `name` and a blank in front of every operator: "> 5 AND < 10" becomes
/// "[T].[A] > 5 AND [T].[A] < 10".
///
/// Each token is looked for from the start of the cell, capitals counting, and its search ends at the first
/// place where it is only a part of a longer operator. Quotes mean nothing to the search: an operator inside
/// a literal gets the name as well. Names that were put in are never searched.
void AppendNamed(QString& text, const QString& cell, const QString& name, const QStringList& tokens);

}  // namespace zephrin
