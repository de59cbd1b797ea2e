#include "wizard/ExportMeans.h"

#include "platform/excel/CellXml.h"
#include "platform/excel/WorkbookFile.h"

#include <QDir>
#include <QLocale>

namespace zephrin {

namespace {

/// Opens the workbook, and tells what the user would not see there.
void HandOver(const std::shared_ptr<Prompts>& prompts, const QString& title, const QString& path,
              qint64 cutTexts) {
    QStringList lines;
    if (!prompts->OpenDocument(path))
        lines << QStringLiteral("The workbook was saved as:") << QDir::toNativeSeparators(path);
    if (cutTexts > 0)
        lines << QStringLiteral(
                     "Texts that were longer than a cell holds (%1 characters) and lost their end: %2.")
                     .arg(QLocale().toString(excel::CellTextLimit), QLocale().toString(cutTexts));
    if (!lines.isEmpty()) prompts->MsgBox(lines.join(QStringLiteral("\r\n")), BoxStyle::Information, title);
}

}  // namespace

ExportMeans MakeExportMeans(ZPGGlobalDeclarations& state) {
    ExportMeans means;
    means.MakeSpreadsheet = [prompts = state.UserPrompts,
                             title = state.Options.gRunTimeCaption](excel::RowSource& rows) {
        return std::make_unique<excel::WorkbookFile>(rows, prompts->ExportFolder(),
                                                     [prompts, title](const QString& path, qint64 cutTexts) {
                                                         HandOver(prompts, title, path, cutTexts);
                                                     });
    };
    return means;
}

}  // namespace zephrin
