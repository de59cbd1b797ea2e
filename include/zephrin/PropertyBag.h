#pragma once

#include <zephrin/Export.h>

#include <QString>
#include <QVariant>

namespace zephrin {

/// A store of named values with a default on read: where the settings of a control outlive the control. There
/// is one over the settings of a program (SettingsPropertyBag) and one over a form file of Qt Designer
/// (FormPropertyBag); a host with a store of its own writes two functions.
///
///     void WriteProperty(const QString& name, const QVariant& value) override { record.insert(name, value);
///     } QVariant ReadProperty(const QString& name, const QVariant& defaultValue) const override {
///         return record.value(name, defaultValue);
///     }
///
/// A flag comes as a number, -1 for True and 0 for False; a colour as the number that the property has. What
/// is read may be of another type as long as it converts: any number but 0 is True, and a QColor is a colour.
class ZEPHRIN_EXPORT PropertyBag {
 public:
    virtual ~PropertyBag();

    /// The value that is stored under `name`, or `defaultValue` where there is none.
    virtual QVariant ReadProperty(const QString& name, const QVariant& defaultValue) const = 0;
    /// Stores `value` under `name`, in the place of what stood there.
    virtual void WriteProperty(const QString& name, const QVariant& value) = 0;
};

}  // namespace zephrin
