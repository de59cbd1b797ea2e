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

    /// The string in ODBC's form. What was in that form already and nobody changed stands as it was written.
    QString Text() const;
    /// The same for a driver that takes what stands between `{` and `};` as it is, a closing brace inside not
    /// doubled. Throws ado::Error for a value that can't be written so.
    QString TextWithRawBraces() const;

 private:
    struct Item {
        QString Name;
        QString Value;
        /// The part as it was written; empty after a change, and in a string of OLE DB, whose quotes mean
        /// nothing to ODBC.
        QString Written;
    };
    qsizetype Find(QStringView name) const;
    void DropDuplicates();
    friend class StringReader;

    QList<Item> items;
    bool oleDb = false;
};

/// Whether a keyword that is on or off is on, or off; neither for a word that nobody knows.
bool IsYes(const QString& value);
bool IsNo(const QString& value);

}  // namespace zephrin::ado::odbc
