#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <optional>

namespace zephrin::text {

/// True for what the classic run-time takes for a number: sign, digits with group separators, decimal point, exponent
/// (E or D), currency sign, brackets for a negative, &H and &O, blanks around. "" is none.
bool IsNumeric(QStringView text);
/// The number that IsNumeric accepts, or nothing.
std::optional<double> ToNumber(QStringView text);

/// True for a date or a time in the leniency of the classic run-time: US forms first, then the order of `locale`, ISO,
/// two-digit years (0..29 are 2000..2029), month names, times with am/pm.
bool IsDate(QStringView text, const QLocale& locale = QLocale());
std::optional<QDateTime> ToDate(QStringView text, const QLocale& locale = QLocale());

/// `value` written by a format of the classic run-time ("mm/dd/yyyy h:mm:ss am/pm", with "m" behind "h" as minutes,
/// "n", "ddd", "mmmm", "w", "q", "AMPM", quoted text, "\" and the named formats). Sunday is the first day of the week.
QString Format(const QDateTime& value, QStringView format, const QLocale& locale = QLocale());

}  // namespace zephrin::text
