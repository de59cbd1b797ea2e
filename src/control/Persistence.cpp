#include "control/Persistence.h"

#include "wizard/OleColour.h"

#include <QMetaType>
#include <QScopeGuard>

#include <cmath>
#include <limits>
#include <optional>
#include <variant>

namespace zephrin {

namespace {

using Member =
    std::variant<QString ControlProperties::*, int ControlProperties::*, quint32 ControlProperties::*,
                 bool ControlProperties::*, QFont ControlProperties::*, QIcon ControlProperties::*>;

struct StoredProperty {
    QLatin1StringView Key;
    Member Value;
};

#define ZEPHRIN_STORED(Name)                               \
    StoredProperty {                                       \
        QLatin1StringView(#Name), &ControlProperties::Name \
    }

/// In the order in which a bag is read and written.
constexpr StoredProperty storedProperties[] = {
    ZEPHRIN_STORED(ZPBConnectionString),
    ZEPHRIN_STORED(ZPBCommandType),
    ZEPHRIN_STORED(ZPBCommandTimeout),
    ZEPHRIN_STORED(ZPBTableString),
    ZEPHRIN_STORED(ConnectionTimeout),
    ZEPHRIN_STORED(ZPBLabelBackColor),
    ZEPHRIN_STORED(ZPBLabelForeColor),
    ZEPHRIN_STORED(ZPBAllowTableSelection),
    ZEPHRIN_STORED(ZPBAllowJoinCreation),
    ZEPHRIN_STORED(ZPBAllowFieldSelection),
    ZEPHRIN_STORED(ZPBShowQueryResults),
    ZEPHRIN_STORED(ZPBAllowValueSearch),
    ZEPHRIN_STORED(ZPBCreateQueryRecordset),
    ZEPHRIN_STORED(ZPBRunTimeControlIcon),
    ZEPHRIN_STORED(ZPBRunTimeControlCaption),
    ZEPHRIN_STORED(ZPBLabelFont),
    ZEPHRIN_STORED(ZPBAllowGroupByOption),
    ZEPHRIN_STORED(ZPBAllowOrderByOption),
    ZEPHRIN_STORED(ZPBAllowCalcFieldOption),
    ZEPHRIN_STORED(ZPBAllowAndOrOverride),
    ZEPHRIN_STORED(ZPBAllowExcelExport),
    ZEPHRIN_STORED(ZPBAllowSaveDeleteQuery),
    ZEPHRIN_STORED(ZPBAllowSQLReset),
    ZEPHRIN_STORED(ZPBAllowCreateView),
    ZEPHRIN_STORED(ZPBModalForm),
    ZEPHRIN_STORED(ZPBDateFormat),
    ZEPHRIN_STORED(ZPBDisableDefaultExportToExcel),
};

#undef ZEPHRIN_STORED

template <class Value>
QVariant ToStored(const Value& value) {
    return QVariant::fromValue(value);
}
QVariant ToStored(bool value) {
    return value ? -1 : 0;
}

/// The whole number that a value or a text stands for; nothing where it is none, or out of all proportion.
std::optional<qint64> ToWhole(const QVariant& stored) {
    bool sound = false;
    if (const qint64 whole = stored.toLongLong(&sound); sound && stored.typeId() != QMetaType::Double)
        return whole;
    const double number = stored.toDouble(&sound);
    if (!sound || !(std::fabs(number) < 1e15)) return std::nullopt;
    return std::llrint(number);
}

QString FromStored(const QVariant& stored, const QString& other) {
    return stored.canConvert<QString>() ? stored.toString() : other;
}

int FromStored(const QVariant& stored, int other) {
    const qint64 whole = ToWhole(stored).value_or(other);
    return whole == static_cast<int>(whole) ? static_cast<int>(whole) : other;
}

/// A system colour may have been stored as a signed number.
quint32 FromStored(const QVariant& stored, quint32 other) {
    if (stored.typeId() == QMetaType::QColor) return ToOleColour(stored.value<QColor>());
    const qint64 whole = ToWhole(stored).value_or(other);
    const bool fits =
        whole >= std::numeric_limits<qint32>::min() && whole <= std::numeric_limits<quint32>::max();
    return fits ? static_cast<quint32>(whole) : other;
}

bool FromStored(const QVariant& stored, bool other) {
    bool isNumber = false;
    const double number = stored.toDouble(&isNumber);
    if (isNumber) return number != 0;
    const QString word = stored.toString();
    if (word.compare(u"true", Qt::CaseInsensitive) == 0) return true;
    return word.compare(u"false", Qt::CaseInsensitive) != 0 && other;
}

/// A bag that keeps texts alone has a font as the text that fonts make of themselves, and its size tells it
/// from a text that is none.
QFont FromStored(const QVariant& stored, const QFont& other) {
    if (stored.typeId() == QMetaType::QFont) return stored.value<QFont>();
    const QString text = stored.typeId() == QMetaType::QByteArray ? QString::fromUtf8(stored.toByteArray())
                                                                  : stored.toString();
    const qsizetype parts = text.count(u',') + 1;
    QFont font;
    return parts >= 10 && parts <= 17 && text.front() != u',' && font.fromString(text) ? font : other;
}

QIcon FromStored(const QVariant& stored, const QIcon& other) {
    return stored.canConvert<QIcon>() ? stored.value<QIcon>() : other;
}

}  // namespace

ControlProperties ReadControlProperties(const PropertyBag& bag, const ControlProperties& defaults) {
    ControlProperties properties;
    for (const StoredProperty& property : storedProperties) {
        const auto read = [&](auto member) {
            const QVariant stored = bag.ReadProperty(property.Key, ToStored(defaults.*member));
            properties.*member = FromStored(stored, defaults.*member);
        };
        std::visit(read, property.Value);
    }
    return properties;
}

void WriteControlProperties(PropertyBag& bag, const ControlProperties& properties) {
    for (const StoredProperty& property : storedProperties) {
        std::visit([&](auto member) { bag.WriteProperty(property.Key, ToStored(properties.*member)); },
                   property.Value);
    }
}

void RegisterColourConversion() {
    static const auto registered = [] {
        const QMetaType colour = QMetaType::fromType<QColor>(), number = QMetaType::fromType<quint32>();
        // A plugin and the program that loads it may each hold a copy of this library.
        const bool isNew = !QMetaType::hasRegisteredConverterFunction(colour, number);
        if (isNew) {
            const auto convert = [](const void* from, void* to) {
                *static_cast<quint32*>(to) = ToOleColour(*static_cast<const QColor*>(from));
                return true;
            };
            QMetaType::registerConverterFunction(convert, colour, number);
        }
        return qScopeGuard([isNew, colour, number] {
            if (isNew) QMetaType::unregisterConverterFunction(colour, number);
        });
    }();
}

}  // namespace zephrin
