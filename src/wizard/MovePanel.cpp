#include "wizard/MovePanel.h"

#include "wizard/Build.h"
#include "wizard/ListBox.h"
#include "wizard/ShowControl.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zephrin {

namespace {

/// The arrow that points to the other list: in a mirrored layout that one stands on the left.
QString Arrow(bool right, const QString& all = {}) {
    const bool pointsRight = right != QGuiApplication::isRightToLeft();
    return (pointsRight ? QStringLiteral("arrow-right") : QStringLiteral("arrow-left")) + all;
}

void ShowMove(QPushButton* button, const ButtonState& state, ListBox* source) {
    if (!state.Enabled && button->hasFocus()) source->setFocus(Qt::OtherFocusReason);
    ShowControl(button, state);
}

}  // namespace

MovePanel::MovePanel(const Names& names)
    : From(new ListBox(names.From)),
      To(new ListBox(names.To)),
      Right(MakeIconButton(names.Buttons + QStringLiteral("Right"), Arrow(true), names.MoveRight)),
      RightAll(MakeIconButton(names.Buttons + QStringLiteral("RightAll"), Arrow(true, QStringLiteral("-all")),
                              names.MoveAllRight)),
      Left(MakeIconButton(names.Buttons + QStringLiteral("Left"), Arrow(false), names.MoveLeft)),
      LeftAll(MakeIconButton(names.Buttons + QStringLiteral("LeftAll"), Arrow(false, QStringLiteral("-all")),
                             names.MoveAllLeft)) {
    for (ListBox* list : {From, To})
        list->setWhatsThis(tr("Enter or a double-click moves the row to the other list."));
    setObjectName(names.Frame);
    setProperty("Tag", QString::number(names.FrameTag));

    auto* grid = new QGridLayout(this);
    grid->addWidget(MakeLabel(QStringLiteral("lbl") + names.From.mid(3), names.FromTag, From), 0, 0);
    grid->addWidget(MakeLabel(QStringLiteral("lbl") + names.To.mid(3), names.ToTag, To), 0, 2);
    // Added in the order in which the Tab key visits them.
    grid->addWidget(From, 1, 0);
    auto* buttons = new QVBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {Right, RightAll, Left, LeftAll}) buttons->addWidget(button);
    buttons->addStretch();
    grid->addLayout(buttons, 1, 1);
    grid->addWidget(To, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(1, 1);
    QWidget* order[] = {From, Right, RightAll, Left, LeftAll, To};
    for (int i = 1; i < static_cast<int>(std::size(order)); ++i) setTabOrder(order[i - 1], order[i]);
}

void MovePanel::ShowButtons(const ButtonState& right, const ButtonState& rightAll, const ButtonState& left,
                            const ButtonState& leftAll) {
    ShowMove(Right, right, From);
    ShowMove(RightAll, rightAll, From);
    ShowMove(Left, left, To);
    ShowMove(LeftAll, leftAll, To);
}

}  // namespace zephrin
