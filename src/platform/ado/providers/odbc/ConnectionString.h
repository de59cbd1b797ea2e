#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace zephrin::ado::odbc {

/// A connection string in its keywords, in ODBC's form (`Driver={...};Server=...`) or OLE DB's
/// (`Provider=...;...`).
///
/// A value may stand in braces, with `}}` for a closing one inside; in OLE DB's form in quotes too, doubled
/// inside. Names don't mind case or the blanks around them, empty parts (`;;`) count for nothing. Of a
/// keyword that stands twice ODBC's form takes the first and OLE DB's the last.
class ConnectionString {
 public:
    /// Throws ado::Error for a string that is not well formed. Its text names keywords but no value, since
    /// that may be the password.
    static ConnectionString Parse(const QString& text);

    bool IsOleDb() const { return oleDb; }
    bool Has(QStringView name) const { return Find(name) >= 0; }
    QString Value(QStringView name) const;
    /// The value of the first of `names` that is there.
    QString FirstOf(std::initializer_list<QStringView> names) const;

    /// Changes the value, or adds the keyword at the end.
    void Set(const QString& name, const QString& value);
    void Remove(QStringView name);
    /// Takes the value out and returns it; nothing where the keyword is not there.
    std::optional<QString> Take(QStringView name);
    /// The names as they were written, in order.
    QList<QString> Names() const;

    /// The string in ODBC's form. What nobody changed stands as it was written.
    QString Text() const;

 private:
    struct Item {
        QString Name;
        QString Value;
        /// The part as it was written, or empty after a change.
        QString Written;
    };
    qsizetype Find(QStringView name) const;
    void DropDuplicates();
    friend class StringReader;

    QList<Item> items;
    bool oleDb = false;
};

}  // namespace zephrin::ado::odbc
