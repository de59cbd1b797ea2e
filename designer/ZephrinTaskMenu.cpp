#include "designer/ZephrinTaskMenu.h"

#include "designer/ChangePropertiesCommand.h"
#include "designer/ConnectionDialog.h"

#include <zephrin/Zephrin.h>

#include <QDesignerFormWindowInterface>
#include <QExtensionManager>
#include <QPointer>
#include <QUndoStack>

#include <memory>

namespace zephrin::designer {

ZephrinTaskMenu::ZephrinTaskMenu(Zephrin& designed, QObject* parent)
    : QObject(parent), control(designed), connection(new QAction(QStringLiteral("Connection..."), this)) {
    connection->setObjectName(QStringLiteral("actionConnection"));
    connect(connection, &QAction::triggered, this, &ZephrinTaskMenu::EditConnection);
}

void ZephrinTaskMenu::EditConnection() {
    auto* form = QDesignerFormWindowInterface::findFormWindow(&control);
    if (!form) return;
    const auto write = [form = QPointer(form)](QObject& target,
                                               const ChangePropertiesCommand::Values& values) {
        auto* widget = qobject_cast<QWidget*>(&target);
        if (!form || !widget) return;
        auto command = std::make_unique<ChangePropertiesCommand>(*form, *widget, values);
        if (command->ChangesAnything()) form->commandHistory()->push(command.release());
    };
    ConnectionDialog(control, write, form).exec();
}

ZephrinTaskMenuFactory::ZephrinTaskMenuFactory(QExtensionManager* manager) : QExtensionFactory(manager) {}

QObject* ZephrinTaskMenuFactory::createExtension(QObject* object, const QString& iid, QObject* parent) const {
    auto* control = qobject_cast<Zephrin*>(object);
    if (!control || iid != QLatin1StringView(Q_TYPEID(QDesignerTaskMenuExtension))) return nullptr;
    return new ZephrinTaskMenu(*control, parent);
}

}  // namespace zephrin::designer
