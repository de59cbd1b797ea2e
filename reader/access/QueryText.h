#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace zephrin::reader::access {

/// One of the rows that a database keeps of a saved query.
struct QueryRow {
    int Attribute = 0;
    int Flag = 0;
    QByteArray Order;
    QString Name;
    QString OtherName;
    QString Expression;
};

/// The statement of a query that selects rows, and the tables that it reads; nothing for a query of another
/// kind, and for one that asks for parameters or reads from another file.
struct QueryText {
    QString Statement;
    QList<QString> Tables;
};
std::optional<QueryText> TextOfQuery(QList<QueryRow> rows);

}  // namespace zephrin::reader::access
