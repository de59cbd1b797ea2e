#include "wizard/ExportMeans.h"

#include "platform/excel/WorkbookFile.h"
#include "wizard/EscapeWatch.h"

#include <QDir>

namespace zephrin {

namespace {

void HandOver(const std::shared_ptr<Prompts>& prompts, const QString& title, const QString& path) {
    if (prompts->OpenDocument(path)) return;
    prompts->MsgBox(QStringLiteral("The workbook was saved as:\r\n") + QDir::toNativeSeparators(path),
                    BoxStyle::Information, title);
}

}  // namespace

ExportMeans MakeExportMeans(ZPGGlobalDeclarations& state) {
    ExportMeans means;
    means.MakeSpreadsheet = [prompts = state.UserPrompts,
                             title = state.Options.gRunTimeCaption](excel::RowSource& rows) {
        return std::make_unique<excel::WorkbookFile>(
            rows, prompts->ExportFolder(),
            [prompts, title](const QString& path) { HandOver(prompts, title, path); });
    };
    means.StopRequested = [watch = std::make_shared<EscapeWatch>()] { return watch->Pressed(); };
    return means;
}

}  // namespace zephrin
