#include "support/SpreadsheetProgram.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace zephrin::test {

namespace {

/// Reads the flat form of an OpenDocument spreadsheet, which is one XML file.
class FlatReader {
 public:
    explicit FlatReader(QIODevice& file) : xml(&file) {}

    QStringList Run() {
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement())
                Begin();
            else if (xml.isEndElement() && xml.name() == u"table-row")
                EndRow();
        }
        EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
        return facts;
    }

 private:
    QString Attribute(const char16_t* name) const {
        for (const QXmlStreamAttribute& each : xml.attributes())
            if (each.name() == name) return each.value().toString();
        return {};
    }

    void Begin() {
        if (xml.name() == u"table")
            facts << QStringLiteral("sheet ") + Attribute(u"name");
        else if (xml.name() == u"table-cell")
            ReadCell();
        else if (xml.name() == u"data-pilot-table")
            pivot = Attribute(u"name");
        else if (xml.name() == u"source-cell-range")
            facts << QStringLiteral("pivot %1 of %2").arg(pivot, Attribute(u"cell-range-address"));
    }

    void ReadCell() {
        const QString type = Attribute(u"value-type");
        QString value = type == u"boolean" ? Attribute(u"boolean-value")
                        : type == u"date"  ? Attribute(u"date-value")
                                           : Attribute(u"value");
        const QString shown = xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
        if (type == u"string") value = shown;
        cells << (type.isEmpty() ? QStringLiteral("void") : type + u':' + value);
    }

    void EndRow() {
        while (!cells.isEmpty() && cells.last() == u"void") cells.removeLast();
        if (!cells.isEmpty()) facts << QStringLiteral("row ") + cells.join(u'|');
        cells.clear();
    }

    QXmlStreamReader xml;
    QStringList facts;
    QStringList cells;
    QString pivot;
};

}  // namespace

std::optional<QStringList> ReadBySpreadsheetProgram(const QString& path) {
    const QString program = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (program.isEmpty()) return std::nullopt;
    // A profile of its own: a program that the user has open would take the order and answer nothing.
    const QTemporaryDir folder;
    QProcess convert;
    convert.start(program, {QStringLiteral("-env:UserInstallation=file://") +
                                folder.filePath(QStringLiteral("profile")),
                            QStringLiteral("--headless"), QStringLiteral("--convert-to"),
                            QStringLiteral("fods"), QStringLiteral("--outdir"), folder.path(), path});
    EXPECT_TRUE(convert.waitForFinished(90'000));
    QFile flat(folder.filePath(QFileInfo(path).completeBaseName() + QStringLiteral(".fods")));
    if (!flat.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "the workbook was not read: " << convert.readAllStandardError().toStdString();
        return QStringList();
    }
    return FlatReader(flat).Run();
}

}  // namespace zephrin::test
