#pragma once

#include <QStyledItemDelegate>

namespace zephrin {

/// Paints the names and operators of a list so that they read the same in a mirrored window.
class TextDelegate : public QStyledItemDelegate {
    Q_OBJECT
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

 protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace zephrin
