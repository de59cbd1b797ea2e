#pragma once

#include <zephrin/PropertyBag.h>

class QSettings;

namespace zephrin {

/// A property bag in the settings of a program: one entry a property, all of them in one group.
///
///     QSettings settings;
///     SettingsPropertyBag bag(settings, QStringLiteral("QueryBuilder"));
///     control.ReadProperties(bag);
///
/// The connection string is among the values, and with it a password that stands in it: settings are plain
/// text.
class ZEPHRIN_EXPORT SettingsPropertyBag : public PropertyBag {
 public:
    /// `settings` must outlive the bag. A group that is open there counts, too; an empty `group` adds none.
    explicit SettingsPropertyBag(QSettings& settings, const QString& group = {});
    ~SettingsPropertyBag() override;

    QVariant ReadProperty(const QString& name, const QVariant& defaultValue) const override;
    void WriteProperty(const QString& name, const QVariant& value) override;

 private:
    QString Key(const QString& name) const;

    QSettings& store;
    QString prefix;
};

}  // namespace zephrin
