#include "platform/controls/GridAccessible.h"

#include "platform/controls/DataGrid.h"

#include <QAccessibleWidget>
#include <QAction>

namespace zephrin::controls {

namespace {

class AccessibleGrid : public QAccessibleWidget {
 public:
    explicit AccessibleGrid(DataGrid* itsGrid)
        : QAccessibleWidget(itsGrid, QAccessible::Pane), grid(itsGrid) {}

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        const auto actions = grid->CellActions();
        for (const QAction* action : actions)
            if (action->isEnabled() && action->isVisible()) names << NameOf(*action);
        return names;
    }

    QString localizedActionName(const QString& name) const override {
        const QAction* action = Find(name);
        return action ? QString(action->text()).remove(u'&') : QAccessibleWidget::localizedActionName(name);
    }

    QStringList keyBindingsForAction(const QString& name) const override {
        const QAction* action = Find(name);
        if (!action) return QAccessibleWidget::keyBindingsForAction(name);
        QStringList keys;
        const auto shortcuts = action->shortcuts();
        for (const QKeySequence& shortcut : shortcuts) keys << shortcut.toString(QKeySequence::NativeText);
        return keys;
    }

    void doAction(const QString& name) override {
        QAction* action = Find(name);
        if (!action) return QAccessibleWidget::doAction(name);
        if (action->isEnabled() && grid->isEnabled()) action->trigger();
    }

 private:
    /// The button has the name that screen readers know for pressing; the others have their own.
    static QString NameOf(const QAction& action) {
        return action.objectName() == QLatin1StringView("cellButton") ? pressAction() : action.objectName();
    }

    QAction* Find(const QString& name) const {
        const auto actions = grid->CellActions();
        for (QAction* action : actions)
            if (action->isVisible() && NameOf(*action) == name) return action;
        return nullptr;
    }

    DataGrid* grid;
};

QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
    if (className != QLatin1StringView(DataGrid::staticMetaObject.className())) return nullptr;
    return new AccessibleGrid(static_cast<DataGrid*>(object));
}

}  // namespace

void MakeGridsAccessible() {
    QAccessible::installFactory(MakeInterface);
}

}  // namespace zephrin::controls
