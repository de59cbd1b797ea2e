#include <zephrin/SettingsPropertyBag.h>

#include <QSettings>

namespace zephrin {

PropertyBag::~PropertyBag() = default;

SettingsPropertyBag::SettingsPropertyBag(QSettings& settings, const QString& group)
    : store(settings), prefix(group.isEmpty() ? QString() : group + u'/') {}

SettingsPropertyBag::~SettingsPropertyBag() = default;

QString SettingsPropertyBag::Key(const QString& name) const {
    return prefix + name;
}

QVariant SettingsPropertyBag::ReadProperty(const QString& name, const QVariant& defaultValue) const {
    return store.value(Key(name), defaultValue);
}

void SettingsPropertyBag::WriteProperty(const QString& name, const QVariant& value) {
    store.setValue(Key(name), value);
}

}  // namespace zephrin
