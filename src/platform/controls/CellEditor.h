#pragma once

#include <QLineEdit>
#include <QPersistentModelIndex>

namespace zephrin::controls {

/// The line in which a cell is edited, or in which the text of one that may not be changed is selected.
class CellEditor : public QLineEdit {
    Q_OBJECT
 public:
    CellEditor(const QModelIndex& cell, bool readOnly, QWidget* parent);

    const QPersistentModelIndex& Cell() const { return cell; }
    void Load(const QString& text);
    /// True while the text differs from the one that was loaded or accepted last.
    bool IsChanged() const { return !isReadOnly() && text() != accepted; }
    void Accept() { accepted = text(); }
    /// A refused editor stays open until its text is accepted or given up.
    void SetRefused(bool value) { refused = value; }
    bool IsRefused() const { return refused; }

 private:
    QPersistentModelIndex cell;
    QString accepted;
    bool refused = false;
};

}  // namespace zephrin::controls
