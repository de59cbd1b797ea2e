#pragma once

#include <zephrin/PropertyBag.h>

#include <QStringList>
#include <QVariantMap>

namespace zephrin::test {

/// A property bag in memory, that notes in which order it is asked.
class MapBag : public PropertyBag {
 public:
    QVariantMap Values;
    mutable QStringList Asked;
    mutable QVariantMap Defaults;

    QVariant ReadProperty(const QString& name, const QVariant& defaultValue) const override {
        Asked << name;
        Defaults.insert(name, defaultValue);
        return Values.value(name, defaultValue);
    }
    /// The values in the order of their names, a line each; an icon only as what it is.
    static QString Picture(const QVariantMap& values) {
        QStringList lines;
        for (auto value = values.begin(); value != values.end(); ++value)
            lines << value.key() + u'=' + QString::fromLatin1(value->typeName()) + u' ' + value->toString();
        return lines.join(u'\n');
    }
    void WriteProperty(const QString& name, const QVariant& value) override {
        Asked << name;
        Values.insert(name, value);
    }
};

}  // namespace zephrin::test
