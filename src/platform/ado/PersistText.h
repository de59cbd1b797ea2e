#pragma once

#include <zephrin/ado/Recordset.h>

namespace zephrin::ado {

/// Text as it stands in the persisted form: characters that XML cannot hold (most control characters, halves
/// of pairs) are written "_xHHHH_", and so is the underscore of what would read as such an escape.
QString EscapedForXml(const QString& text);
QString UnescapedFromXml(const QString& text);

/// A value that suits `field`, as text of the persisted form. Throws ErrorNumber::ValueRefused for what that
/// form cannot hold (a date beyond the year 9999).
QString PersistedValue(const QVariant& value, const Field& field);
/// The value of such a text. Throws ErrorNumber::ValueRefused for what the field cannot hold.
QVariant ValueOfPersisted(const QString& text, const Field& field);

}  // namespace zephrin::ado
