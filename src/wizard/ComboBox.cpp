#include "wizard/ComboBox.h"

#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QSignalBlocker>

namespace zephrin {

ComboBox::ComboBox(const QString& name, QWidget* parent) : QComboBox(parent) {
    setObjectName(name);
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    // A look-up may bring a hundred thousand values: nothing here measures them all.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    if (auto* list = qobject_cast<QListView*>(view())) list->setUniformItemSizes(true);
    connect(this, &QComboBox::activated, this, &ComboBox::Picked);
    connect(lineEdit(), &QLineEdit::textEdited, this, &ComboBox::Typed);
    connect(lineEdit(), &QLineEdit::returnPressed, this, &ComboBox::Entered);
}

void ComboBox::SetItems(ListState* items) {
    if (model() == items) return;
    const QSignalBlocker blocker(this);
    setModel(items);
}

void ComboBox::ShowSelection(int index, const QString& text) {
    const QSignalBlocker blocker(this);
    if (currentIndex() != index) setCurrentIndex(index);
    // Setting the same text would take the caret away from where the user types.
    if (currentText() != text) setEditText(text);
}

void ComboBox::SetPickOnly() {
    lineEdit()->installEventFilter(this);
}

bool ComboBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonPress && isEnabled() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
        showPopup();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

}  // namespace zephrin
