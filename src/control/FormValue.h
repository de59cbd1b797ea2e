#pragma once

#include <QString>
#include <QVariant>

namespace zephrin {

/// What an element of a Designer form stands for: a flag, a number, a text, a colour, a font or an icon,
/// whose files are looked for in `folder`. Invalid for anything else.
QVariant ReadFormValue(const QString& element, const QString& folder);

/// The element for a value. The attributes of a text come from `present`, the element that it replaces, if
/// that is a text, too; a new one is translatable if it is said to be. Empty when forms have no notation for
/// the value: an icon without a name, a text with characters that no XML can hold, or a type that they do not
/// know.
QString WriteFormValue(const QVariant& value, const QString& present, bool translatable);

}  // namespace zephrin
