#pragma once

#include <QByteArray>
#include <QString>

namespace zephrin::ado::providers::sqlite {

/// A name as SQLite takes any name: in double quotes, its own doubled.
inline QByteArray QuotedName(const QString& name) {
    QByteArray quoted = name.toUtf8();
    quoted.replace('"', "\"\"");
    return '"' + quoted + '"';
}

/// A text as a literal.
inline QByteArray QuotedText(const QString& text) {
    QByteArray quoted = text.toUtf8();
    quoted.replace('\'', "''");
    return '\'' + quoted + '\'';
}

}  // namespace zephrin::ado::providers::sqlite
