#include "control/ZephrinPrivate.h"

#include <QPointer>

// What the properties hold and report. Nothing here reaches an open wizard: it reads copies made when it was
// shown.

namespace zephrin {

// Setting a property reports it, also where the value stays the same.
#define ZEPHRIN_PROPERTY(Type, Argument, Name)         \
    Type Zephrin::Name() const {                       \
        return d->properties.Name;                     \
    }                                                  \
    void Zephrin::Set##Name(Argument value) {          \
        d->properties.Name = value;                    \
        Q_EMIT PropertyChanged(QStringLiteral(#Name)); \
    }

ZEPHRIN_PROPERTY(QString, const QString&, ZPBConnectionString)
ZEPHRIN_PROPERTY(QString, const QString&, ZPBCommandType)
ZEPHRIN_PROPERTY(int, int, ZPBCommandTimeout)
ZEPHRIN_PROPERTY(QString, const QString&, ZPBTableString)
ZEPHRIN_PROPERTY(int, int, ConnectionTimeout)
ZEPHRIN_PROPERTY(quint32, quint32, ZPBLabelBackColor)
ZEPHRIN_PROPERTY(quint32, quint32, ZPBLabelForeColor)
ZEPHRIN_PROPERTY(QFont, const QFont&, ZPBLabelFont)
ZEPHRIN_PROPERTY(QIcon, const QIcon&, ZPBRunTimeControlIcon)
ZEPHRIN_PROPERTY(QString, const QString&, ZPBRunTimeControlCaption)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowFieldSelection)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowValueSearch)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowGroupByOption)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowOrderByOption)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowCalcFieldOption)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowExcelExport)
ZEPHRIN_PROPERTY(bool, bool, ZPBDisableDefaultExportToExcel)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowSaveDeleteQuery)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowSQLReset)
ZEPHRIN_PROPERTY(bool, bool, ZPBAllowCreateView)
ZEPHRIN_PROPERTY(bool, bool, ZPBModalForm)
ZEPHRIN_PROPERTY(QString, const QString&, ZPBDateFormat)

#undef ZEPHRIN_PROPERTY

bool Zephrin::ZPBAllowTableSelection() const {
    return d->properties.ZPBAllowTableSelection;
}
bool Zephrin::ZPBAllowJoinCreation() const {
    return d->properties.ZPBAllowJoinCreation;
}
bool Zephrin::ZPBShowQueryResults() const {
    return d->properties.ZPBShowQueryResults;
}
bool Zephrin::ZPBCreateQueryRecordset() const {
    return d->properties.ZPBCreateQueryRecordset;
}
bool Zephrin::ZPBAllowAndOrOverride() const {
    return d->properties.ZPBAllowAndOrOverride;
}

void Zephrin::SetZPBAllowTableSelection(bool value) {
    d->SetWithDependent(d->properties.ZPBAllowTableSelection, QStringLiteral("ZPBAllowTableSelection"), value,
                        d->properties.ZPBAllowJoinCreation, QStringLiteral("ZPBAllowJoinCreation"));
}

void Zephrin::SetZPBAllowJoinCreation(bool value) {
    if (!d->properties.ZPBAllowTableSelection) return;
    d->properties.ZPBAllowJoinCreation = value;
    Q_EMIT PropertyChanged(QStringLiteral("ZPBAllowJoinCreation"));
}

void Zephrin::SetZPBCreateQueryRecordset(bool value) {
    d->SetWithDependent(d->properties.ZPBCreateQueryRecordset, QStringLiteral("ZPBCreateQueryRecordset"),
                        value, d->properties.ZPBShowQueryResults, QStringLiteral("ZPBShowQueryResults"));
}

void Zephrin::SetZPBShowQueryResults(bool value) {
    if (!d->properties.ZPBCreateQueryRecordset) return;
    d->properties.ZPBShowQueryResults = value;
    Q_EMIT PropertyChanged(QStringLiteral("ZPBShowQueryResults"));
}

// Reserved: the property can be read, and a stored value comes back, but setting it has no effect.
void Zephrin::SetZPBAllowAndOrOverride(bool) {}

}  // namespace zephrin
