#include "control/FormDocument.h"

#include <zephrin/ado/Error.h>

#include <QXmlStreamReader>

#include <utility>

namespace zephrin {

namespace {

constexpr QLatin1StringView propertyTag("property");

ado::Error Refusal(const QString& file, const QString& why) {
    return ado::Error(ado::ErrorNumber::InvalidArgument, QStringLiteral("%1: %2").arg(file, why),
                      QStringLiteral("Zephrin"));
}

}  // namespace

/// Goes through a form element by element and notes where those of one widget begin and end.
class FormDocument::Finder {
 public:
    Finder(const QString& form, const QString& widgetName) : text(form), widget(widgetName), reader(form) {}

    Places Run() {
        Places places;
        while (!reader.atEnd()) {
            const qsizetype before = Position();
            reader.readNext();
            if (reader.isStartElement()) {
                Start(places, {ElementStart(before), Position()});
            } else if (reader.isEndElement()) {
                End(places);
            } else if (reader.isDTD()) {
                // Entities of its own would stand for text that cannot be found in the form.
                reader.raiseError(QStringLiteral("A form with a document type cannot be edited."));
            }
        }
        return places;
    }
    /// What keeps the text from being a form; empty when nothing does.
    QString Fault() const {
        if (reader.hasError())
            return QStringLiteral("%1 (line %2)").arg(reader.errorString()).arg(reader.lineNumber());
        return isForm ? QString() : QStringLiteral("This is no form of Qt Designer.");
    }

 private:
    qsizetype Position() const { return static_cast<qsizetype>(reader.characterOffset()); }
    /// The reader ends a text behind the bracket of the tag that follows.
    qsizetype ElementStart(qsizetype before) const {
        return before > 0 && text.at(before) != u'<' ? before - 1 : before;
    }

    void Start(Places& places, Range tag) {
        ++depth;
        const QString name = reader.attributes().value(QLatin1StringView("name")).toString();
        if (depth == 1) {
            isForm = reader.name() == QLatin1StringView("ui");
        } else if (widgetDepth == 0) {
            const bool isWidget = reader.name() == QLatin1StringView("widget") && name == widget;
            if (!isWidget || places.StartTag.Start >= 0) return;
            widgetDepth = depth;
            places.StartTag = tag;
        } else if (depth == widgetDepth + 1 && reader.name() == propertyTag) {
            propertyName = name;
            property = {tag, {}};
        } else if (depth == widgetDepth + 2 && property.Whole.Start >= 0) {
            property.Value.Start = tag.Start;
        }
    }
    void End(Places& places) {
        --depth;
        if (widgetDepth == 0) return;
        if (depth == widgetDepth + 1 && property.Whole.Start >= 0) {
            property.Value.End = Position();
        } else if (depth == widgetDepth && property.Whole.Start >= 0) {
            property.Whole.End = Position();
            places.LastPropertyEnd = Position();
            places.Properties.insert(propertyName, std::exchange(property, {}));
        } else if (depth == widgetDepth - 1) {
            widgetDepth = 0;
        }
    }

    const QString& text;
    const QString& widget;
    QXmlStreamReader reader;
    int depth = 0;
    int widgetDepth = 0;
    bool isForm = false;
    QString propertyName;
    Property property;
};

FormDocument::FormDocument(QString form, QString objectName, QString fileName)
    : text(std::move(form)),
      widget(std::move(objectName)),
      file(std::move(fileName)),
      newLine(text.contains(QLatin1StringView("\r\n")) ? QStringLiteral("\r\n") : QStringLiteral("\n")),
      places(Find(text)) {}

FormDocument::Places FormDocument::Find(const QString& form) const {
    Finder finder(form, widget);
    Places found = finder.Run();
    if (const QString fault = finder.Fault(); !fault.isEmpty()) throw Refusal(file, fault);
    if (found.StartTag.Start < 0)
        throw ado::Error(ado::ErrorNumber::ItemNotFound,
                         QStringLiteral("%1: The form has no widget named '%2'.").arg(file, widget),
                         QStringLiteral("Zephrin"));
    return found;
}

QString FormDocument::Value(const QString& name) const {
    const Range value = places.Properties.value(name).Value;
    return value.Start < 0 ? QString() : text.mid(value.Start, value.End - value.Start);
}

void FormDocument::SetValue(const QString& name, const QString& element) {
    const Range standing = places.Properties.value(name).Whole;
    if (standing.Start >= 0)
        return Replace(standing, PropertyElement(name, element, LineStart(standing.Start)));
    const QString indent = LineStart(places.StartTag.Start);
    const QString added = newLine + indent + u' ' + PropertyElement(name, element, indent + u' ');
    if (places.LastPropertyEnd >= 0) return Replace({places.LastPropertyEnd, places.LastPropertyEnd}, added);
    const qsizetype end = places.StartTag.End;
    if (text.at(end - 2) != u'/') return Replace({end, end}, added);
    Replace({end - 2, end}, u'>' + added + newLine + indent + QStringLiteral("</widget>"));
}

void FormDocument::RemoveValue(const QString& name) {
    Range range = places.Properties.value(name).Whole;
    if (range.Start < 0) return;
    const QString indent = newLine + LineStart(range.Start);
    if (QStringView(text).first(range.Start).endsWith(indent)) range.Start -= indent.size();
    Replace(range, {});
}

void FormDocument::Replace(const Range& range, const QString& replacement) {
    QString changed = text;
    changed.replace(range.Start, range.End - range.Start, replacement);
    places = Find(changed);
    text = std::move(changed);
}

/// The blanks in front of what begins at `position`; empty when there is something else on the line.
QString FormDocument::LineStart(qsizetype position) const {
    // The search begins in front of the position, counted from the end: there is nothing in front of the
    // first.
    const qsizetype line = text.lastIndexOf(u'\n', position - text.size() - 1) + 1;
    const QString front = text.mid(line, position - line);
    return front.trimmed().isEmpty() ? front : QString();
}

QString FormDocument::PropertyElement(const QString& name, const QString& element,
                                      const QString& indent) const {
    // The setters of the control are not named as Designer expects them: without stdset="0" the code that is
    // made of the form would call others.
    const QString open = QStringLiteral("<property name=\"%1\" stdset=\"0\">").arg(name.toHtmlEscaped());
    QString inner = element;
    // The lines of a text are its own.
    const bool isText = element.startsWith(QLatin1StringView("<string"));
    if (!isText) inner.replace(u'\n', newLine + indent + u' ');
    return open + newLine + indent + u' ' + inner + newLine + indent + QStringLiteral("</property>");
}

}  // namespace zephrin
