#pragma once

#include "platform/ado/providers/sqlite/functions/Call.h"

#include <QList>

#include <string_view>

namespace zephrin::ado::providers::sqlite {

/// The functions that a translated statement may call, by what they work on.
QList<FunctionEntry> TextFunctions();
QList<FunctionEntry> MathFunctions();
QList<FunctionEntry> DateFunctions();
QList<FunctionEntry> FormatFunctions();
QList<FunctionEntry> OperatorFunctions();
QList<FunctionEntry> ArithmeticFunctions();
QList<FunctionEntry> ConversionFunctions();
/// What the schema is read with: zx_type_code and zx_type_size of a declaration.
QList<FunctionEntry> SchemaFunctions();

/// Makes everything known to a connection: functions, aggregates, the order of texts.
void RegisterFunctions(sqlite3* database, Dialect dialect);

/// Whether `text` fits the pattern: % any characters, _ one, [abc] and [a-c] one of them, [^a] none of them.
/// `escape` takes its meaning from the character behind it; 0 for none. `padded`: blanks that the text has at
/// its end beyond the pattern don't count, as with char and varchar.
bool IsLike(QStringView text, QStringView pattern, QChar escape = QChar(), bool padded = false);
/// The same of UTF-8, without an escape.
bool IsLike(std::string_view text, std::string_view pattern, bool padded);

/// A date as the server writes it in a style of CONVERT, or nothing for a style that is not there.
std::optional<QString> DateInStyle(qint64 ticks, int style);
/// A date as a file writes it where a text is wanted.
QString GeneralDate(qint64 ticks);
/// How three numbers of a text are read in that style.
DateOrder OrderOfStyle(int style);

}  // namespace zephrin::ado::providers::sqlite
