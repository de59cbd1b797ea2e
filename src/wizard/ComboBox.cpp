#include "wizard/ComboBox.h"

#include "platform/controls/QuietWheel.h"
#include "wizard/TextDelegate.h"

#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QScopedValueRollback>

namespace zephrin {

ComboBox::ComboBox(const QString& name, QWidget* parent) : QComboBox(parent) {
    setObjectName(name);
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    // A look-up may bring a hundred thousand values: nothing here measures them all.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    controls::KeepWheelAway(this);
    setItemDelegate(new TextDelegate(this));
    if (auto* list = qobject_cast<QListView*>(view())) list->setUniformItemSizes(true);
    connect(this, &QComboBox::currentIndexChanged, this, &ComboBox::ReportIndex);
    connect(this, &QComboBox::activated, this, [this](int index) {
        const QPointer<ComboBox> alive(this);
        if (!reported) Q_EMIT Picked(index);
        if (alive && !browsing) Q_EMIT Chosen(index);
    });
    connect(lineEdit(), &QLineEdit::textChanged, this, &ComboBox::ReportText);
    connect(lineEdit(), &QLineEdit::returnPressed, this, &ComboBox::Entered);
}

void ComboBox::SetItems(ListState* items) {
    if (state == items && model() == items) return;
    if (state) state->disconnect(this);
    state = items;
    // The box changes index and text by itself while its items change. Connected around the box's own
    // connections, these two keep such changes from being taken for the user's.
    const auto begin = [this] { following = true; };
    const auto end = [this] { following = false; };
    connect(items, &ListState::rowsAboutToBeInserted, this, begin);
    connect(items, &ListState::rowsAboutToBeRemoved, this, begin);
    connect(items, &ListState::modelAboutToBeReset, this, begin);
    const QScopedValueRollback guard(following, true);
    setModel(items);
    connect(items, &ListState::rowsInserted, this, end);
    connect(items, &ListState::rowsRemoved, this, end);
    connect(items, &ListState::modelReset, this, end);
}

void ComboBox::ShowSelection(int index, const QString& text) {
    const QScopedValueRollback guard(following, true);
    if (currentIndex() != index) setCurrentIndex(index);
    // Setting the same text would take the caret away from where the user types.
    if (currentText() != text) setEditText(text);
    knownText = text;
}

/// The keys that go from item to item pick each of them, and choose none.
void ComboBox::keyPressEvent(QKeyEvent* event) {
    const QPointer<ComboBox> alive(this);
    browsing = true;
    QComboBox::keyPressEvent(event);
    if (alive) browsing = false;
}

void ComboBox::wheelEvent(QWheelEvent* event) {
    const QPointer<ComboBox> alive(this);
    browsing = true;
    QComboBox::wheelEvent(event);
    if (alive) browsing = false;
}

void ComboBox::SetPickOnly() {
    lineEdit()->installEventFilter(this);
}

void ComboBox::ReportIndex(int index) {
    if (following || index < 0) return;
    knownText = itemText(index);
    // A pick by mouse or key is also announced as an activation, within the same event.
    reported = true;
    QMetaObject::invokeMethod(
        this, [this] { reported = false; }, Qt::QueuedConnection);
    Q_EMIT Picked(index);
}

void ComboBox::ReportText() {
    const QString text = lineEdit()->text();
    if (following || text == knownText) return;
    const bool comesWithIndex =
        currentIndex() >= 0 && text == itemText(currentIndex()) && !lineEdit()->isModified();
    if (comesWithIndex) return;
    knownText = text;
    Q_EMIT Typed(text);
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
