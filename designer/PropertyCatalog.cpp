#include "designer/PropertyCatalog.h"

#include <QXmlStreamWriter>

#include <algorithm>
#include <iterator>

namespace zephrin::designer {

namespace {

/// The footprint of the control at 96 dots per inch. The control keeps to it whatever a form says.
constexpr int footprintWidth = 60;
constexpr int footprintHeight = 74;

enum class Translated { No, Yes };

struct Entry {
    const char* Name;
    const char* Group;
    const char* ToolTip;
    /// Only texts have a say in it.
    Translated Text = Translated::Yes;
};

constexpr const char* connection = "Zephrin: connection";
constexpr const char* tabs = "Zephrin: tabs";
constexpr const char* look = "Zephrin: look";
constexpr const char* query = "Zephrin: query";
constexpr const char* files = "Zephrin: export and files";

constexpr Entry entries[] = {
    {"ZPBConnectionString", connection, "Connection that ZPBMakeConnection opens when it gets none",
     Translated::No},
    {"ZPBCommandType", connection, "What the connection page offers", Translated::No},
    {"ZPBCommandTimeout", connection, "Seconds for a statement; 0 waits for ever"},
    {"ZPBTableString", connection, "The tables on offer, with a semicolon between them", Translated::No},
    {"ConnectionTimeout", connection, "Seconds for connecting; 0 waits for ever"},
    {"ZPBLabelBackColor", look, "Back colour of the wizard's labels and check boxes"},
    {"ZPBLabelForeColor", look, "Text colour of the wizard's labels and check boxes"},
    {"ZPBLabelFont", look, "Font of the wizard's labels, check boxes and buttons"},
    {"ZPBRunTimeControlIcon", look, "Icon of the wizard; without one it has the application's"},
    {"ZPBRunTimeControlCaption", look, "Caption of the wizard and title of its boxes"},
    {"ZPBModalForm", look, "The wizard blocks the other windows of the application while it is open"},
    {"ZPBAllowTableSelection", tabs,
     "The tab on which tables are chosen; without it there is no join tab either"},
    {"ZPBAllowJoinCreation", tabs, "The tab on which tables are joined; needs ZPBAllowTableSelection"},
    {"ZPBAllowFieldSelection", tabs, "The tab on which fields are chosen"},
    {"ZPBShowQueryResults", tabs, "The tab with the rows of a query; needs ZPBCreateQueryRecordset"},
    {"ZPBCreateQueryRecordset", query,
     "A query that is run goes to the database; otherwise the program only gets its text"},
    {"ZPBAllowValueSearch", query, "Values for criteria can be looked up in the database"},
    {"ZPBAllowGroupByOption", query, "Grouping is offered"},
    {"ZPBAllowOrderByOption", query, "Ordering is offered"},
    {"ZPBAllowCalcFieldOption", query, "Calculated fields are offered"},
    {"ZPBAllowSQLReset", query, "The button that starts the query anew can be pressed"},
    {"ZPBAllowCreateView", query, "The button that stores the query as a view is there, on database servers"},
    {"ZPBDateFormat", query, "How dates are written in criteria"},
    {"ZPBAllowExcelExport", files, "The Excel button is there"},
    {"ZPBDisableDefaultExportToExcel", files,
     "The Excel button only raises ExportToExcel and leaves the export to the program"},
    {"ZPBAllowSaveDeleteQuery", files, "Queries can be saved and deleted, and closing asks whether to save"},
};

void WriteSpecifications(QXmlStreamWriter& xml) {
    xml.writeStartElement(QStringLiteral("propertyspecifications"));
    for (const Entry& entry : entries) {
        xml.writeStartElement(QStringLiteral("tooltip"));
        xml.writeAttribute(QStringLiteral("name"), QLatin1StringView(entry.Name));
        xml.writeCharacters(QLatin1StringView(entry.ToolTip));
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

void WriteFootprint(QXmlStreamWriter& xml) {
    xml.writeStartElement(QStringLiteral("property"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("geometry"));
    xml.writeStartElement(QStringLiteral("rect"));
    xml.writeTextElement(QStringLiteral("x"), QStringLiteral("0"));
    xml.writeTextElement(QStringLiteral("y"), QStringLiteral("0"));
    xml.writeTextElement(QStringLiteral("width"), QString::number(footprintWidth));
    xml.writeTextElement(QStringLiteral("height"), QString::number(footprintHeight));
    xml.writeEndElement();
    xml.writeEndElement();
}

}  // namespace

QString PropertyGroup(const QString& property) {
    const auto* found = std::find_if(std::begin(entries), std::end(entries), [&property](const Entry& entry) {
        return property == QLatin1StringView(entry.Name);
    });
    return found == std::end(entries) ? QString() : QString::fromLatin1(found->Group);
}

QStringList UntranslatedTexts() {
    QStringList names;
    for (const Entry& entry : entries)
        if (entry.Text == Translated::No) names << QString::fromLatin1(entry.Name);
    return names;
}

QString FormDescription(const QString& className, const QString& objectName) {
    QString text;
    QXmlStreamWriter xml(&text);
    xml.writeStartElement(QStringLiteral("ui"));
    xml.writeAttribute(QStringLiteral("language"), QStringLiteral("c++"));
    xml.writeAttribute(QStringLiteral("displayname"), QStringLiteral("Zephrin"));
    xml.writeStartElement(QStringLiteral("widget"));
    xml.writeAttribute(QStringLiteral("class"), className);
    xml.writeAttribute(QStringLiteral("name"), objectName);
    WriteFootprint(xml);
    xml.writeEndElement();
    xml.writeStartElement(QStringLiteral("customwidgets"));
    xml.writeStartElement(QStringLiteral("customwidget"));
    xml.writeTextElement(QStringLiteral("class"), className);
    xml.writeTextElement(QStringLiteral("extends"), QStringLiteral("QWidget"));
    WriteSpecifications(xml);
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndElement();
    return text;
}

}  // namespace zephrin::designer
