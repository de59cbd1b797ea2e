#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace zephrin::ado::providers::sqlite {

/// Whose statements a session takes.
enum class Dialect { SqlServer, Access, Excel };

/// The dialects of database files. They share syntax, functions and wording.
inline bool IsFileDialect(Dialect dialect) {
    return dialect != Dialect::SqlServer;
}

/// The dialect that the words of a connection string name, wherever they stand in it.
std::optional<Dialect> DialectByWords(QStringView connectionString);

/// The value of the keyword `Dialect` that stands for a dialect.
QString DialectKeyword(Dialect dialect);

}  // namespace zephrin::ado::providers::sqlite
