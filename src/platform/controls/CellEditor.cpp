#include "platform/controls/CellEditor.h"

namespace zephrin::controls {

CellEditor::CellEditor(const QModelIndex& index, bool readOnly, QWidget* parent)
    : QLineEdit(parent), cell(index) {
    setObjectName(QStringLiteral("cellEditor"));
    setFrame(false);
    setAutoFillBackground(true);
    setReadOnly(readOnly);
}

void CellEditor::Load(const QString& loaded) {
    // Once the user has typed, a change of the cell by the program must not wipe it.
    if (IsChanged()) return;
    setText(loaded);
    // A line holds no line breaks; what it made of them is no change by the user.
    Accept();
}

}  // namespace zephrin::controls
