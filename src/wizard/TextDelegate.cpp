#include "wizard/TextDelegate.h"

#include "platform/controls/Bidi.h"

namespace zephrin {

void TextDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    // An expression may have line breaks; a row of a list is one line.
    option->text.remove(u'\r');
    option->text.replace(QChar::LineSeparator, u' ').replace(u'\n', u' ');
    if (option->direction == Qt::RightToLeft) option->text = controls::Isolated(option->text);
}

}  // namespace zephrin
