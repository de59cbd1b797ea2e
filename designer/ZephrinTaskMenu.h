#pragma once

#include <QAction>
#include <QDesignerTaskMenuExtension>
#include <QExtensionFactory>
#include <QObject>

namespace zephrin {
class Zephrin;
}

namespace zephrin::designer {

/// "Connection..." in the context menu of a control, which a double click on it opens, too.
class ZephrinTaskMenu : public QObject, public QDesignerTaskMenuExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)

 public:
    ZephrinTaskMenu(Zephrin& control, QObject* parent);

    QAction* preferredEditAction() const override { return connection; }
    QList<QAction*> taskActions() const override { return {connection}; }

 private:
    void EditConnection();

    Zephrin& control;
    QAction* connection;
};

class ZephrinTaskMenuFactory : public QExtensionFactory {
    Q_OBJECT

 public:
    explicit ZephrinTaskMenuFactory(QExtensionManager* manager);

 protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;
};

}  // namespace zephrin::designer
