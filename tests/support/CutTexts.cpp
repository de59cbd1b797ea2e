#include "support/CutTexts.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>

namespace zephrin::test {

namespace {

bool IsOurs(const QWidget& widget) {
    // The toolkit's corner of a table is a button too.
    if (qobject_cast<const QAbstractScrollArea*>(widget.parentWidget())) return false;
    return !widget.objectName().startsWith(QLatin1StringView("qt_")) || qobject_cast<const QTabBar*>(&widget);
}

int TextWidth(const QWidget& widget, const QString& text) {
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

/// A label that wraps needs its longest word in width, and the lines that this makes in height.
bool IsLabelCut(const QLabel& label) {
    if (!label.wordWrap()) {
        const QSize needed = label.sizeHint();
        return label.width() < needed.width() || label.height() < label.minimumSizeHint().height();
    }
    int widest = 0;
    const QStringList words = label.text().split(u' ');
    for (const QString& word : words) widest = std::max(widest, TextWidth(label, word));
    return label.width() < widest || label.height() < label.heightForWidth(label.width());
}

bool IsFrameCut(const QGroupBox& frame) {
    const int room = frame.width() - frame.fontMetrics().averageCharWidth();
    return TextWidth(frame, frame.title()) > room && frame.toolTip().isEmpty();
}

/// Heads that don't all fit get scroll buttons, and then some are out of sight.
bool IsTabBarCut(const QTabBar& bar) {
    QRect all;
    for (int tab = 0; tab < bar.count(); ++tab) all |= bar.tabRect(tab);
    return all.width() > bar.width();
}

bool IsComboCut(const QComboBox& combo) {
    if (combo.isEditable()) return false;
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    const int room = combo.style()
                         ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo)
                         .width();
    int widest = TextWidth(combo, combo.placeholderText());
    for (int item = 0; item < combo.count(); ++item)
        widest = std::max(widest, TextWidth(combo, combo.itemText(item)));
    return widest > room;
}

bool IsCut(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return IsLabelCut(*label);
    if (const auto* frame = qobject_cast<const QGroupBox*>(&widget)) return IsFrameCut(*frame);
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) return IsTabBarCut(*bar);
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) return IsComboCut(*combo);
    if (qobject_cast<const QAbstractButton*>(&widget)) {
        const QSize needed = widget.sizeHint();
        return widget.width() < needed.width() || widget.height() < needed.height();
    }
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget))
        return TextWidth(*line, line->placeholderText()) > line->width() - 8;
    return false;
}

bool IsOutside(const QWidget& widget, const QWidget& window) {
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    return !window.rect().contains(place);
}

QString TextOf(const QWidget& widget) {
    const QVariant title = widget.property("title");
    return title.isValid() ? title.toString() : widget.property("text").toString();
}

}  // namespace

QStringList CutTexts(const QWidget& window) {
    QStringList cut;
    const auto widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (!widget->isVisible() || !IsOurs(*widget) || widget->window() != &window) continue;
        // Status texts come and go, and one that is long must not widen the form.
        if (widget->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) continue;
        const bool isText =
            qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget);
        if (IsCut(*widget))
            cut << QStringLiteral("%1 '%2': %3x%4 of %5x%6")
                       .arg(widget->objectName(), TextOf(*widget))
                       .arg(widget->width())
                       .arg(widget->height())
                       .arg(widget->sizeHint().width())
                       .arg(widget->sizeHint().height());
        else if (isText && IsOutside(*widget, window))
            cut << QStringLiteral("%1 '%2' is outside").arg(widget->objectName(), TextOf(*widget));
    }
    return cut;
}

void StretchCaptions(QWidget& window) {
    const auto longer = [](const QString& text) {
        return text.isEmpty() ? text : text + QString((text.size() + 1) / 2, u'n');
    };
    const auto widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (auto* label = qobject_cast<QLabel*>(widget)) label->setText(longer(label->text()));
        if (auto* button = qobject_cast<QAbstractButton*>(widget)) button->setText(longer(button->text()));
        if (auto* frame = qobject_cast<QGroupBox*>(widget)) frame->setTitle(longer(frame->title()));
        if (auto* tabs = qobject_cast<QTabWidget*>(widget))
            for (int tab = 0; tab < tabs->count(); ++tab) tabs->setTabText(tab, longer(tabs->tabText(tab)));
    }
}

}  // namespace zephrin::test
