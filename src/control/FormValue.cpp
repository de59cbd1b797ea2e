#include "control/FormValue.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QFontInfo>
#include <QIcon>
#include <QMetaEnum>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <functional>

namespace zephrin {

namespace {

using Words = QLatin1StringView;

/// Calls `read` at each child of the element that the reader stands on, with its name; it may read the
/// child's text.
void ForEachChild(QXmlStreamReader& reader,
                  const std::function<void(const QString& name, const QString& text)>& read) {
    while (reader.readNextStartElement()) {
        const QString name = reader.name().toString().toLower();
        read(name, reader.readElementText(QXmlStreamReader::IncludeChildElements));
    }
}

QColor ReadColor(QXmlStreamReader& reader) {
    bool hasAlpha = false;
    const int alpha = reader.attributes().value(Words("alpha")).toInt(&hasAlpha);
    int red = 0, green = 0, blue = 0;
    ForEachChild(reader, [&](const QString& name, const QString& text) {
        if (name == Words("red")) red = text.toInt();
        if (name == Words("green")) green = text.toInt();
        if (name == Words("blue")) blue = text.toInt();
    });
    return QColor(red, green, blue, hasAlpha ? alpha : 255);
}

// --- Fonts: what an element does not say is as in the application's font ---

struct FontFlag {
    const char* Name;
    bool (QFont::*Get)() const;
    void (QFont::*Set)(bool);
};

constexpr FontFlag fontFlags[] = {
    {"italic", &QFont::italic, &QFont::setItalic},
    {"bold", &QFont::bold, &QFont::setBold},
    {"underline", &QFont::underline, &QFont::setUnderline},
    {"strikeout", &QFont::strikeOut, &QFont::setStrikeOut},
    {"kerning", &QFont::kerning, &QFont::setKerning},
};

QFont ReadFont(QXmlStreamReader& reader) {
    QFont font;
    ForEachChild(reader, [&font](const QString& name, const QString& text) {
        if (name == Words("family")) font.setFamilies({text});
        if (name == Words("pointsize") && text.toInt() > 0) font.setPointSize(text.toInt());
        if (name == Words("antialiasing") && text == Words("false"))
            font.setStyleStrategy(QFont::NoAntialias);
        if (name == Words("stylestrategy")) {
            bool known = false;
            const int strategy =
                QMetaEnum::fromType<QFont::StyleStrategy>().keyToValue(text.toLatin1().constData(), &known);
            if (known) font.setStyleStrategy(static_cast<QFont::StyleStrategy>(strategy));
        }
        for (const FontFlag& flag : fontFlags)
            if (name == Words(flag.Name)) (font.*flag.Set)(text == Words("true"));
    });
    return font;
}

int PointSize(const QFont& font) {
    return font.pointSize() > 0 ? font.pointSize() : QFontInfo(font).pointSize();
}

void WriteFont(QXmlStreamWriter& writer, const QFont& font) {
    const QFont usual;
    writer.writeStartElement(QStringLiteral("font"));
    if (font.family() != usual.family()) writer.writeTextElement(QStringLiteral("family"), font.family());
    if (PointSize(font) != PointSize(usual))
        writer.writeTextElement(QStringLiteral("pointsize"), QString::number(PointSize(font)));
    for (const FontFlag& flag : fontFlags) {
        const bool set = (font.*flag.Get)();
        if (set != (usual.*flag.Get)())
            writer.writeTextElement(Words(flag.Name), set ? QStringLiteral("true") : QStringLiteral("false"));
    }
    const char* strategy = QMetaEnum::fromType<QFont::StyleStrategy>().valueToKey(font.styleStrategy());
    if (strategy && font.styleStrategy() != usual.styleStrategy())
        writer.writeTextElement(QStringLiteral("stylestrategy"), Words(strategy));
    writer.writeEndElement();
}

// --- Icons: the name of a theme's icon, or files for the states ---

struct IconState {
    const char* Name;
    QIcon::Mode Mode;
    QIcon::State State;
};

constexpr IconState iconStates[] = {
    {"normaloff", QIcon::Normal, QIcon::Off},     {"normalon", QIcon::Normal, QIcon::On},
    {"disabledoff", QIcon::Disabled, QIcon::Off}, {"disabledon", QIcon::Disabled, QIcon::On},
    {"activeoff", QIcon::Active, QIcon::Off},     {"activeon", QIcon::Active, QIcon::On},
    {"selectedoff", QIcon::Selected, QIcon::Off}, {"selectedon", QIcon::Selected, QIcon::On},
};

QIcon ReadIcon(QXmlStreamReader& reader, const QString& folder) {
    const QString theme = reader.attributes().value(Words("theme")).toString();
    QIcon files;
    const auto add = [&](const QString& path, const IconState& state) {
        // An icon of files that are not there would count as one.
        const QString file = QDir(folder).filePath(path);
        if (!path.isEmpty() && QFile::exists(file)) files.addFile(file, {}, state.Mode, state.State);
    };
    // A form of the old kind has the one file as text, in which newer ones repeat it.
    QString alone;
    bool hasStates = false;
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::EndElement) {
        if (reader.isCharacters()) alone += reader.text();
        if (!reader.isStartElement()) continue;
        const QString name = reader.name().toString().toLower();
        const QString path = reader.readElementText(QXmlStreamReader::IncludeChildElements);
        for (const IconState& state : iconStates) {
            if (name != Words(state.Name)) continue;
            hasStates = true;
            add(path, state);
        }
    }
    if (!hasStates) add(alone.trimmed(), iconStates[0]);
    return !theme.isEmpty() && QIcon::hasThemeIcon(theme) ? QIcon::fromTheme(theme) : files;
}

/// The attributes of a text element, such as those for its translators.
QXmlStreamAttributes TextAttributes(const QString& element, bool translatable) {
    QXmlStreamReader reader(element);
    if (reader.readNextStartElement() && reader.name() == Words("string")) return reader.attributes();
    QXmlStreamAttributes fresh;
    if (!translatable) fresh.append(QStringLiteral("notr"), QStringLiteral("true"));
    return fresh;
}

bool CanStandInXml(const QString& text) {
    const auto isForbidden = [](QChar c) {
        return (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r') || c > QChar(0xFFFD);
    };
    return text.isValidUtf16() && std::none_of(text.begin(), text.end(), isForbidden);
}

void WriteText(QXmlStreamWriter& writer, const QString& text, const QXmlStreamAttributes& attributes) {
    writer.writeStartElement(QStringLiteral("string"));
    writer.writeAttributes(attributes);
    // A carriage return would be read as part of a line end, and there as one character.
    const QStringList parts = text.split(u'\r');
    writer.writeCharacters(parts.first());
    for (qsizetype part = 1; part < parts.size(); ++part) {
        writer.writeEntityReference(QStringLiteral("#13"));
        writer.writeCharacters(parts[part]);
    }
    writer.writeEndElement();
}

void WriteColor(QXmlStreamWriter& writer, const QColor& color) {
    writer.writeStartElement(QStringLiteral("color"));
    if (color.alpha() != 255) writer.writeAttribute(QStringLiteral("alpha"), QString::number(color.alpha()));
    writer.writeTextElement(QStringLiteral("red"), QString::number(color.red()));
    writer.writeTextElement(QStringLiteral("green"), QString::number(color.green()));
    writer.writeTextElement(QStringLiteral("blue"), QString::number(color.blue()));
    writer.writeEndElement();
}

/// The name of an element that holds the value as its text; empty for a value of another kind.
QString PlainElement(int type) {
    switch (type) {
        case QMetaType::Bool:
            return QStringLiteral("bool");
        case QMetaType::Int:
            return QStringLiteral("number");
        case QMetaType::UInt:
            return QStringLiteral("UInt");
        case QMetaType::LongLong:
            return QStringLiteral("longLong");
        case QMetaType::ULongLong:
            return QStringLiteral("uLongLong");
        case QMetaType::Double:
            return QStringLiteral("double");
        default:
            return {};
    }
}

template <class Value>
QVariant Number(const QString& text, Value (QString::*read)(bool*, int) const) {
    bool sound = false;
    const Value number = (text.*read)(&sound, 10);
    return sound ? QVariant(number) : QVariant();
}

QVariant RealNumber(const QString& text) {
    bool sound = false;
    const double number = text.toDouble(&sound);
    return sound ? QVariant(number) : QVariant();
}

QVariant ReadPlain(const QString& name, const QString& text) {
    if (name == Words("bool")) return text == Words("true");
    if (name == Words("number")) return Number(text, &QString::toInt);
    if (name == Words("uint")) return Number(text, &QString::toUInt);
    if (name == Words("longlong")) return Number(text, &QString::toLongLong);
    if (name == Words("ulonglong")) return Number(text, &QString::toULongLong);
    if (name == Words("double") || name == Words("float")) return RealNumber(text);
    return name == Words("string") || name == Words("cstring") ? QVariant(text) : QVariant();
}

}  // namespace

QVariant ReadFormValue(const QString& element, const QString& folder) {
    QXmlStreamReader reader(element);
    if (!reader.readNextStartElement()) return {};
    const QString name = reader.name().toString().toLower();
    if (name == Words("color")) return ReadColor(reader);
    if (name == Words("font")) return ReadFont(reader);
    if (name == Words("iconset")) return ReadIcon(reader, folder);
    return ReadPlain(name, reader.readElementText(QXmlStreamReader::IncludeChildElements));
}

QString WriteFormValue(const QVariant& value, const QString& present, bool translatable) {
    QString element;
    QXmlStreamWriter writer(&element);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    if (const QString plain = PlainElement(value.typeId()); !plain.isEmpty()) {
        writer.writeTextElement(plain, value.toString());
    } else if (value.typeId() == QMetaType::QString) {
        if (!CanStandInXml(value.toString())) return {};
        WriteText(writer, value.toString(), TextAttributes(present, translatable));
    } else if (value.typeId() == QMetaType::QColor) {
        WriteColor(writer, value.value<QColor>());
    } else if (value.typeId() == QMetaType::QFont) {
        WriteFont(writer, value.value<QFont>());
    } else if (const QIcon icon = value.value<QIcon>(); !icon.isNull() && !icon.name().isEmpty()) {
        writer.writeStartElement(QStringLiteral("iconset"));
        writer.writeAttribute(QStringLiteral("theme"), icon.name());
        writer.writeCharacters({});
        writer.writeEndElement();
    }
    return element.trimmed();
}

}  // namespace zephrin
