#pragma once

#include <QDesignerFormEditorInterface>
#include <QObject>
#include <QPointer>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace zephrin::designer {

/// Makes the control known to Qt Designer, and to QUiLoader in a program that loads forms at run time.
///
/// Designer hands its core to initialize(), QUiLoader does not: that is how a control knows whether it is
/// being designed, and shown, or used, and never seen.
class ZephrinPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetInterface)

 public:
    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return !designer.isNull(); }
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    /// Null in a program that only loads forms.
    QPointer<QDesignerFormEditorInterface> designer;
};

}  // namespace zephrin::designer
