#include "designer/ChangePropertiesCommand.h"

#include <zephrin/Zephrin.h>

#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerPropertySheetExtension>
#include <QExtensionManager>

namespace zephrin::designer {

namespace {

QDesignerPropertySheetExtension* SheetOf(const QDesignerFormWindowInterface& form, QWidget& control) {
    return qt_extension<QDesignerPropertySheetExtension*>(form.core()->extensionManager(), &control);
}

}  // namespace

ChangePropertiesCommand::ChangePropertiesCommand(QDesignerFormWindowInterface& formWindow, QWidget& changed,
                                                 const Values& values)
    : QUndoCommand(QStringLiteral("Change connection of '%1'").arg(changed.objectName())),
      form(&formWindow),
      control(&changed) {
    const QDesignerPropertySheetExtension* sheet = SheetOf(formWindow, changed);
    if (!sheet) return;
    const Zephrin pristine;
    for (const auto& [name, value] : values) {
        const QString property = QString::fromLatin1(name);
        const QVariant present = changed.property(name.constData());
        if (present == value) continue;
        changes << Change{property,
                          {present, sheet->isChanged(sheet->indexOf(property))},
                          {value, pristine.property(name.constData()) != value}};
    }
}

void ChangePropertiesCommand::redo() {
    Apply(&Change::After);
}

void ChangePropertiesCommand::undo() {
    Apply(&Change::Before);
}

void ChangePropertiesCommand::Apply(Setting Change::*setting) {
    QDesignerPropertySheetExtension* sheet = form && control ? SheetOf(*form, *control) : nullptr;
    if (!sheet) return;
    for (const Change& change : std::as_const(changes)) {
        const int index = sheet->indexOf(change.Name);
        sheet->setProperty(index, (change.*setting).Value);
        sheet->setChanged(index, (change.*setting).IsStored);
    }
}

}  // namespace zephrin::designer
