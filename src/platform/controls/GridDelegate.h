#pragma once

#include <QStyledItemDelegate>

namespace zephrin::controls {

/// What the delegate and its pane ask of each other about buttons in cells.
class CellButtons {
 public:
    virtual ~CellButtons() = default;
    /// Where the button of a cell lies, in the pane's viewport; empty when the cell shows none.
    virtual QRect ButtonRect(const QModelIndex& index) const = 0;
    virtual bool IsPressed(const QModelIndex& index) const = 0;
};

/// Paints the cells of a pane and opens their editors.
class GridDelegate : public QStyledItemDelegate {
    Q_OBJECT
 public:
    GridDelegate(const CellButtons& buttons, QObject* parent);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

 protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
    const CellButtons& buttons;
};

}  // namespace zephrin::controls
