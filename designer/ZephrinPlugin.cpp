#include "designer/ZephrinPlugin.h"

#include "designer/PropertyCatalog.h"
#include "designer/ZephrinPropertySheet.h"
#include "designer/ZephrinTaskMenu.h"

#include <zephrin/Zephrin.h>

#include <QDesignerFormWindowInterface>
#include <QEvent>
#include <QExtensionManager>
#include <QIcon>

namespace zephrin::designer {

namespace {

constexpr const char* designTime = "ZPBDesignTime";

/// On a form, or in the picture that is dragged to one.
bool IsDesigned(QWidget* control) {
    return QDesignerFormWindowInterface::findFormWindow(control) ||
           control->window()->windowType() == Qt::ToolTip;
}

}  // namespace

QString ZephrinPlugin::name() const {
    return QStringLiteral("zephrin::Zephrin");
}

QString ZephrinPlugin::group() const {
    return QStringLiteral("Zephrin");
}

QString ZephrinPlugin::toolTip() const {
    return QStringLiteral("Zephrin: a query builder for the users of a database program");
}

QString ZephrinPlugin::whatsThis() const {
    return QStringLiteral(
        "Lets the users of a program build, run, save and export queries in a wizard. The control itself is "
        "not seen "
        "while the program runs: call ZPBMakeConnection, then ZPBShowZephrin.");
}

QString ZephrinPlugin::includeFile() const {
    return QStringLiteral("<zephrin/Zephrin.h>");
}

QIcon ZephrinPlugin::icon() const {
    // The widget box shows only icons that have sizes, which a drawing has not.
    const QIcon drawing(QStringLiteral(":/zephrin/designer/zephrin.svg"));
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64}) icon.addPixmap(drawing.pixmap(size, size));
    return icon;
}

QWidget* ZephrinPlugin::createWidget(QWidget* parent) {
    auto* control = new Zephrin(parent);
    if (designer) {
        control->setProperty(designTime, true);
        control->installEventFilter(this);
    }
    return control;
}

bool ZephrinPlugin::eventFilter(QObject* watched, QEvent* event) {
    auto* control = event->type() == QEvent::Show ? qobject_cast<Zephrin*>(watched) : nullptr;
    if (control && !IsDesigned(control)) control->setProperty(designTime, false);
    return QObject::eventFilter(watched, event);
}

void ZephrinPlugin::initialize(QDesignerFormEditorInterface* core) {
    if (!core || designer) return;
    designer = core;
    QExtensionManager* manager = core->extensionManager();
    manager->registerExtensions(new ZephrinPropertySheetFactory(manager),
                                Q_TYPEID(QDesignerPropertySheetExtension));
    manager->registerExtensions(new ZephrinTaskMenuFactory(manager), Q_TYPEID(QDesignerTaskMenuExtension));
}

QString ZephrinPlugin::domXml() const {
    return FormDescription(name(), QStringLiteral("zephrin"));
}

}  // namespace zephrin::designer
