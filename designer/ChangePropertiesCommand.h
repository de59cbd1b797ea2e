#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QUndoCommand>
#include <QVariant>
#include <QWidget>

#include <utility>

class QDesignerFormWindowInterface;

namespace zephrin::designer {

/// One step of a form's history that sets several properties of one control, those that the property editor
/// hides included. It notes which of them the form stores: a value that goes back to what a new control has
/// is stored no more.
class ChangePropertiesCommand : public QUndoCommand {
 public:
    using Values = QList<std::pair<QByteArray, QVariant>>;

    /// Properties that have their value already are left alone.
    ChangePropertiesCommand(QDesignerFormWindowInterface& form, QWidget& control, const Values& values);

    bool ChangesAnything() const { return !changes.isEmpty(); }
    void redo() override;
    void undo() override;

 private:
    struct Setting {
        QVariant Value;
        bool IsStored = false;
    };
    struct Change {
        QString Name;
        Setting Before, After;
    };

    void Apply(Setting Change::*setting);

    QPointer<QDesignerFormWindowInterface> form;
    QPointer<QWidget> control;
    QList<Change> changes;
};

}  // namespace zephrin::designer
