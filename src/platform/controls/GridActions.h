#pragma once

#include <QList>
#include <QString>

class QAction;

namespace zephrin::controls {

class DataGridPrivate;

/// What can be done with the current cell of a grid other than typing into it. One list serves the keys, the
/// context menu and screen readers, so that none of them can do more than the others.
class GridActions {
 public:
    explicit GridActions(DataGridPrivate& grid);

    /// The actions, enabled as the current cell allows. They belong to the grid.
    const QList<QAction*>& Now();
    /// What the button of a cell and a click on a head do. Without words a head has no action.
    void SetButtonText(const QString& text);
    void SetHeadText(const QString& text);
    /// The keys of what the owner of the grid gave words for, as a sentence for screen readers.
    QString KeysInWords() const;

 private:
    QAction* Add(const QString& name, const QString& caption);
    void Copy() const;
    void Widen(int characters) const;

    DataGridPrivate& grid;
    QList<QAction*> all;
    QList<QAction*> worded;
    QAction* button;
    QAction* head;
    QAction* copy;
    QAction* open;
    QAction* wider;
    QAction* narrower;
    QAction* fit;
};

}  // namespace zephrin::controls
