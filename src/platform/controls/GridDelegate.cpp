#include "platform/controls/GridDelegate.h"

#include "platform/controls/Bidi.h"
#include "platform/controls/CellEditor.h"
#include "platform/controls/RecordsetModel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QToolTip>

namespace zephrin::controls {

namespace {

/// One line of a text of several; breaks and tabs would make rows of a cell.
QString OneLine(QString text) {
    for (QChar& c : text)
        if (c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    return text;
}

/// As many characters as can be seen in `width`; measuring more would cost time for nothing.
qsizetype VisibleChars(int width, const QFontMetrics& metrics) {
    const int narrow = std::max(2, metrics.averageCharWidth() / 3);
    return std::max(width, 0) / narrow + 4;
}

QString PlainToolTip(const QString& text) {
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

}  // namespace

GridDelegate::GridDelegate(const CellButtons& cellButtons, QObject* parent)
    : QStyledItemDelegate(parent), buttons(cellButtons) {}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->rect.isValid())
        option->text.truncate(VisibleChars(option->rect.width(), option->fontMetrics));
    option->text = OneLine(option->text);
    if (option->direction == Qt::RightToLeft) option->text = Isolated(option->text);
    if (!index.data(RecordsetModel::NullRole).toBool()) return;
    option->text = QStringLiteral("Null");
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->font.setItalic(true);
    option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    // The width that fits a cell, but never that of a whole long text.
    const QString text = OneLine(index.data().toString().left(200));
    const int margin =
        option.widget ? option.widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1 : 3;
    const QFontMetrics metrics(option.font);
    return {metrics.horizontalAdvance(text) + 2 * margin + 4, metrics.height() + 4};
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const QRect button = buttons.ButtonRect(index);
    if (button.isEmpty()) return QStyledItemDelegate::paint(painter, option, index);

    QStyleOptionViewItem beside = option;
    if (option.state.testFlag(QStyle::State_Selected))
        painter->fillRect(option.rect, option.palette.highlight());
    if (option.direction == Qt::LeftToRight)
        beside.rect.setRight(button.left() - 1);
    else
        beside.rect.setLeft(button.right() + 1);
    QStyledItemDelegate::paint(painter, beside, index);

    QStyleOptionButton face;
    face.rect = button;
    face.palette = option.palette;
    face.fontMetrics = option.fontMetrics;
    face.direction = option.direction;
    face.state =
        QStyle::State_Enabled | (buttons.IsPressed(index) ? QStyle::State_Sunken : QStyle::State_Raised);
    face.text = QStringLiteral("\u2026");
    QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_PushButton, &face, painter, option.widget);
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    const auto* model = qobject_cast<const RecordsetModel*>(index.model());
    return new CellEditor(index, !model || !model->MayEdit(index.row()), parent);
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* line = qobject_cast<CellEditor*>(editor)) line->Load(index.data(Qt::EditRole).toString());
}

void GridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
    QRect rect = option.rect;
    const QRect button = buttons.ButtonRect(index);
    if (!button.isEmpty() && option.direction == Qt::LeftToRight) rect.setRight(button.left() - 1);
    if (!button.isEmpty() && option.direction == Qt::RightToLeft) rect.setLeft(button.right() + 1);
    editor->setGeometry(rect);
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = index.data().toString();
    const QRect button = buttons.ButtonRect(index);
    const int room = view->visualRect(index).width() - button.width();
    const bool cut = text.contains(u'\n') || sizeHint(option, index).width() > room;
    if (cut && !text.isEmpty()) {
        const bool more = text.size() >= RecordsetModel::ShownChars;
        QToolTip::showText(event->globalPos(), PlainToolTip(more ? text + u'\u2026' : text), view);
    } else {
        QToolTip::hideText();
    }
    return true;
}

}  // namespace zephrin::controls
