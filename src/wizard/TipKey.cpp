#include "wizard/TipKey.h"

#include "wizard/ShowControl.h"

#include <QApplication>
#include <QShortcut>
#include <QTextDocument>
#include <QToolTip>

namespace zephrin {

namespace {

void ShowTip(const QWidget* window) {
    QWidget* control = QApplication::focusWidget();
    if (!control || control->window() != window) return;
    QStringList texts;
    for (const QString& text : {control->toolTip(), PlainToolTip(control->whatsThis())})
        if (!text.isEmpty()) texts << text;
    if (texts.isEmpty()) return;
    const bool rich = Qt::mightBeRichText(texts.first()) || Qt::mightBeRichText(texts.last());
    QToolTip::showText(control->mapToGlobal(control->rect().bottomLeft()),
                       texts.join(rich ? QStringLiteral("<br>") : QStringLiteral("\n")), control);
}

}  // namespace

void AddTipKey(QWidget* window) {
    auto* key = new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F1), window);
    QObject::connect(key, &QShortcut::activated, window, [window] { ShowTip(window); });
}

}  // namespace zephrin
