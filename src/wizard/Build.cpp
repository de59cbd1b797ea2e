#include "wizard/Build.h"

#include "wizard/Icons.h"
#include "wizard/ShowControl.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace zephrin {

namespace {

void SetTag(QWidget* widget, int tag) {
    if (tag != 0) widget->setProperty("Tag", QString::number(tag));
}

}  // namespace

QLabel* MakeLabel(const QString& name, int tag, QWidget* buddy) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    if (buddy) label->setBuddy(buddy);
    SetTag(label, tag);
    return label;
}

QGroupBox* MakeFrame(const QString& name, int tag) {
    auto* frame = new QGroupBox;
    frame->setObjectName(name);
    SetTag(frame, tag);
    return frame;
}

QPushButton* MakeButton(const QString& name, int tag, const QString& icon) {
    auto* button = new QPushButton;
    button->setObjectName(name);
    button->setAutoDefault(false);
    SetTag(button, tag);
    if (!icon.isEmpty()) SetFace(button, icon);
    return button;
}

QPushButton* MakeIconButton(const QString& name, const QString& icon, const QString& accessibleName) {
    auto* button = MakeButton(name, 0);
    SetFace(button, icon, accessibleName);
    button->setAccessibleName(accessibleName);
    SetDesignToolTip(button, accessibleName);
    return button;
}

}  // namespace zephrin
