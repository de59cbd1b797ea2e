#pragma once

#include <zephrin/Export.h>

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <memory>

namespace zephrin {

struct ZPGGlobalDeclarations;

/// The tables that the wizard will offer, for a host that wants to add some or to take some away: after a
/// connection was made, and before the wizard is shown. A wizard that is open sees nothing of it.
///
///     clsTableCollection tables = control.ZPBTableCollection();
///     tables.AddTable(QStringLiteral("Orders"));   // asks the database whether there is such a table
///     tables.RemoveTable(1);                       // by position, from 1, or by name
///
/// A name may carry its delimiters or not: `Orders` and `[Orders]` are one table. What goes wrong is told in
/// a box and never thrown. It is a value without data of its own: copies speak of the same tables, and it may
/// outlive its control, after which it does nothing.
class ZEPHRIN_EXPORT clsTableCollection {
    Q_GADGET
    Q_PROPERTY(int CountTableCollection READ CountTableCollection)
 public:
    clsTableCollection() = default;
    /// Made by Zephrin::ZPBTableCollection; a default-made one has no tables and takes none.
    explicit clsTableCollection(const std::shared_ptr<ZPGGlobalDeclarations>& state) : run(state) {}

    /// Puts the table or view of that name on offer, when the database has it; a box tells why not.
    Q_INVOKABLE void AddTable(const QString& TableName);
    /// A number, or a text that reads as one, is a position; anything else is a name.
    Q_INVOKABLE void RemoveTable(const QVariant& TableIndex);
    /// The table at that position, from 1; "" outside.
    Q_INVOKABLE QString GetTableName(int Item) const;
    /// How many tables are on offer.
    int CountTableCollection() const;

 private:
    std::weak_ptr<ZPGGlobalDeclarations> run;
};

}  // namespace zephrin

Q_DECLARE_METATYPE(zephrin::clsTableCollection)
