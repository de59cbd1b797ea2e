#pragma once

#include <QMap>
#include <QString>

namespace zephrin {

/// The text of a Designer form, in which the properties of one widget can be found and replaced. What is not
/// replaced keeps every one of its characters.
class FormDocument {
 public:
    /// Throws ado::Error when the text is no sound form, or has no widget of that name. `fileName` is for the
    /// message.
    FormDocument(QString text, QString objectName, QString fileName);

    const QString& Text() const { return text; }
    /// The element that is the value of a property, tags and all; empty where the widget has no such
    /// property.
    QString Value(const QString& name) const;
    /// Puts an element in the place of a property's value, or adds the property behind the others. Throws
    /// ado::Error, with nothing changed, when that would damage the form.
    void SetValue(const QString& name, const QString& element);
    void RemoveValue(const QString& name);

 private:
    /// From the first character to the one behind the last.
    struct Range {
        qsizetype Start = -1;
        qsizetype End = -1;
    };
    struct Property {
        Range Whole;
        Range Value;
    };
    /// Where the widget is, and where its properties are.
    struct Places {
        Range StartTag;
        QMap<QString, Property> Properties;
        qsizetype LastPropertyEnd = -1;
    };
    class Finder;

    Places Find(const QString& form) const;
    void Replace(const Range& range, const QString& replacement);
    QString LineStart(qsizetype position) const;
    QString PropertyElement(const QString& name, const QString& element, const QString& indent) const;

    QString text;
    QString widget;
    QString file;
    QString newLine;
    Places places;
};

}  // namespace zephrin
