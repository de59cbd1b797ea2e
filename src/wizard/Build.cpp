#include "wizard/Build.h"

#include "wizard/Icons.h"
#include "wizard/ShowControl.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace zephrin {

namespace {

void SetTag(QWidget* widget, int tag) {
    if (tag != 0) widget->setProperty("Tag", QString::number(tag));
}

}  // namespace

QLabel* MakeLabel(const QString& name, int tag, QWidget* buddy) {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    NameLabel(label, name, tag, buddy);
    return label;
}

void NameLabel(QLabel* label, const QString& name, int tag, QWidget* buddy) {
    label->setObjectName(name);
    if (buddy) label->setBuddy(buddy);
    SetTag(label, tag);
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

void MakeOneStop(const QList<QRadioButton*>& options) {
    const auto stopAt = [options](const QRadioButton* chosen) {
        for (QRadioButton* each : options)
            each->setFocusPolicy(each == chosen ? Qt::StrongFocus : Qt::ClickFocus);
    };
    for (QRadioButton* option : options) {
        if (option->isChecked()) stopAt(option);
        QObject::connect(option, &QRadioButton::toggled, option, [stopAt, option](bool chosen) {
            if (chosen) stopAt(option);
        });
    }
}

}  // namespace zephrin
