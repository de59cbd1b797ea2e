#include "wizard/Look.h"

#include "wizard/OleColour.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QStyle>

namespace zephrin {

namespace {

void Colour(QWidget* widget, const QColor& back, const QColor& fore) {
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, back);
    palette.setColor(QPalette::WindowText, fore);
    widget->setPalette(palette);
    widget->setBackgroundRole(QPalette::Window);
    widget->setAutoFillBackground(true);
}

bool KeepsItsLook(const QWidget* widget) {
    const QString name = widget->objectName();
    return name == QLatin1StringView("lblQuestionMark") || name == QLatin1StringView("lblJoinType") ||
           name == QLatin1StringView("chkLockJoinTables");
}

/// Labels that the design names; the grid's and the toolkit's own have other names or none.
bool IsFormLabel(const QLabel* label) {
    return label->objectName().startsWith(QLatin1StringView("lbl")) ||
           label->parentWidget()->objectName() == QLatin1StringView("fraTxt");
}

}  // namespace

void ApplyLook(QWidget* form, const RunOptions& options, const QFont& font) {
    const QColor back = OleColour(options.gLabelBackColor, form->palette());
    const QColor fore = OleColour(options.gLabelForeColor, form->palette());
    const auto labels = form->findChildren<QLabel*>();
    for (QLabel* label : labels) {
        if (!IsFormLabel(label) || KeepsItsLook(label)) continue;
        Colour(label, back, fore);
        label->setFont(font);
        label->setMargin(4);
    }
    const auto boxes = form->findChildren<QCheckBox*>();
    for (QCheckBox* box : boxes) {
        if (KeepsItsLook(box)) continue;
        Colour(box, back, fore);
        box->setFont(font);
    }
    const auto buttons = form->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) button->setFont(font);
    // A style sheet of the host's has the last word, on controls too that it has styled already.
    const auto widgets = form->findChildren<QWidget*>();
    for (QWidget* widget : widgets)
        if (widget->testAttribute(Qt::WA_StyleSheet)) widget->style()->polish(widget);
}

void SetForeColour(QWidget* widget, const QColor& colour) {
    QPalette palette = widget->palette();
    if (palette.color(QPalette::Active, QPalette::WindowText) == colour) return;
    palette.setColor(QPalette::WindowText, colour);
    widget->setPalette(palette);
}

void SetCaption(QWidget* widget, const QString& text) {
    QString shown = text;
    if (auto* frame = qobject_cast<QGroupBox*>(widget)) {
        shown.replace(u'&', QStringLiteral("&&"));
        if (frame->title() != shown) frame->setTitle(shown);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        if (label->buddy()) shown.replace(u'&', QStringLiteral("&&"));
        label->setTextFormat(Qt::PlainText);
        if (label->text() != shown) label->setText(shown);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        if (button->text() != shown) button->setText(shown);
    }
}

void ApplyCaptions(QWidget* form, const ZPGGlobalDeclarations& state, int lastId) {
    const auto widgets = form->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const bool takesCaption = qobject_cast<QLabel*>(widget) || qobject_cast<QGroupBox*>(widget) ||
                                  qobject_cast<QPushButton*>(widget);
        bool isNumber = false;
        const int id = widget->property("Tag").toString().toInt(&isNumber);
        if (takesCaption && isNumber && id >= 101 && id <= lastId) SetCaption(widget, ResString(state, id));
    }
}

}  // namespace zephrin
