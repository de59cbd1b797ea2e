#pragma once

#include "runstate/ListState.h"

#include <QComboBox>
#include <QPointer>

namespace zephrin {

/// A drop-down over a ListState whose text may be typed. It neither completes nor stores what is typed, and
/// it selects nothing by itself: index and text are what ShowSelection was told.
class ComboBox : public QComboBox {
    Q_OBJECT
 public:
    explicit ComboBox(const QString& name, QWidget* parent = nullptr);

    /// Shows `items`, which may go before the box does.
    void SetItems(ListState* items);
    void ShowSelection(int index, const QString& text);
    /// Drops the list down when the text is clicked, for a box whose text can't be chosen by typing.
    void SetPickOnly();

 Q_SIGNALS:
    /// An item of the list was picked, also the one that was chosen already.
    void Picked(int index);
    /// The user came to a decision: he took an item out of the open list. Comes behind Picked.
    void Chosen(int index);
    void Typed(const QString& text);
    /// Enter was pressed in the text.
    void Entered();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void ReportIndex(int index);
    void ReportText();

    QPointer<ListState> state;
    QString knownText;
    bool following = false;
    bool reported = false;
    bool browsing = false;
};

}  // namespace zephrin
