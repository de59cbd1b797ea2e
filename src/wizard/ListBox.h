#pragma once

#include "runstate/ListState.h"

#include <QListView>
#include <QPointer>

namespace zephrin {

/// A list control: shows the items and the selection of a ListState and reports what the user picks.
///
/// The selection follows the state alone. Where the toolkit would select a neighbour after a removal, nothing
/// stays selected; a click on the row that is selected already is a click like any other.
class ListBox : public QListView {
    Q_OBJECT
 public:
    explicit ListBox(const QString& name, QWidget* parent = nullptr);

    /// Shows `items`, which may go before the list does. Showing the same again changes nothing.
    void SetItems(ListState* items);

 Q_SIGNALS:
    /// The user picked a row, also the one that was selected already.
    void Picked(int row);
    /// The user came to a decision: he clicked a row, or pressed Enter on it; the keys that go from row to
    /// row only pick. Comes behind Picked.
    void Chosen(int row);
    /// A row was double-clicked, or Enter was pressed on it.
    void DblClick();

 protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 private:
    void FollowState();

    QPointer<ListState> state;
    bool following = false;
    bool reported = false;
};

}  // namespace zephrin
