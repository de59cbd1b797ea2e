#include "wizard/TextDelegate.h"

#include "platform/controls/Bidi.h"

namespace zephrin {

void TextDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->direction == Qt::RightToLeft) option->text = controls::Isolated(option->text);
}

}  // namespace zephrin
