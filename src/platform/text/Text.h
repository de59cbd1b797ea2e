#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <optional>

namespace zephrin::text {

/// True for what the classic run-time takes for a number: sign, digits with group separators, decimal point,
/// exponent (E or D), currency sign, brackets for a negative, &H and &O, blanks around. "" is none.
bool IsNumeric(QStringView text);
/// The number that IsNumeric accepts, or nothing.
std::optional<double> ToNumber(QStringView text);

/// True for a date or a time in the leniency of the classic run-time: the order of `locale` first (month,
/// day, year for US and C), then any order that the numbers allow, ISO, two-digit years (0..29 are
/// 2000..2029), month names in English and in the locale's language, times with am/pm, in front of the date
/// or behind it. "13.50" is a time.
bool IsDate(QStringView text, const QLocale& locale = QLocale());
/// The date that IsDate accepts. A time alone stands on 1899-12-30, a date without a year in the present one.
/// The answer is in UTC, so that no hour of the text falls into a gap of summer time.
std::optional<QDateTime> ToDate(QStringView text, const QLocale& locale = QLocale());

/// `value` written by a format of the classic run-time ("mm/dd/yyyy h:mm:ss am/pm", with "m" behind "h" as
/// minutes, "n", "ddd", "mmmm", "w", "q", "AMPM", quoted text, "\" and the named formats). Sunday is the
/// first day of the week, the week of January 1 the first. "/" and ":" stay what they are, whatever the
/// locale's separators: what is written here is read by a database.
QString Format(const QDateTime& value, QStringView format, const QLocale& locale = QLocale());

/// How a picture of a number is read: as the classic run-time does, or as servers do (quotes of both kinds,
/// no point behind which nothing stands).
enum class PictureStyle { Classic, Server };

/// Whether a format is for numbers, and not for dates: it has places for digits, or names a form of numbers.
bool IsNumberFormat(QStringView format);
/// `value` written by a picture of digits ("#,##0.00;(#,##0.00)", "0.0%", "0.00E+00", "000-0000"), its
/// sections being for positive, negative and 0; the classic run-time has names for some ("Currency",
/// "Percent", "Yes/No"). Fifteen digits count, and halves go away from 0.
QString FormatNumber(double value, QStringView format, PictureStyle style = PictureStyle::Classic,
                     const QLocale& locale = QLocale::c());

}  // namespace zephrin::text
