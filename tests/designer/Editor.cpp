#include "Editor.h"

#include "support/ExpectedLog.h"

#include <QCoreApplication>
#include <QDesignerFormWindowCursorInterface>
#include <QDesignerFormWindowManagerInterface>
#include <QDesignerIntegration>
#include <QDesignerObjectInspectorInterface>
#include <QDesignerPropertyEditorInterface>
#include <QDesignerWidgetBoxInterface>
#include <QExtensionManager>
#include <QUndoStack>
#include <QXmlStreamReader>
#include <QtDesigner/qdesigner_components.h>

#include <gtest/gtest.h>

namespace zephrin::test {

namespace {

/// The text of an element, with the texts of the elements in it joined by commas.
QString TextOf(QXmlStreamReader& xml) {
    QStringList parts;
    QString own;
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.isStartElement()) parts << TextOf(xml);
        if (xml.isCharacters() && !xml.isWhitespace()) own += xml.text();
    }
    return parts.isEmpty() ? own : parts.join(u',');
}

}  // namespace

QString FormText(const QString& properties) {
    return QStringLiteral(
               R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">)"
               R"(<widget class="zephrin::Zephrin" name="zephrin"><property name="geometry"><rect>)"
               R"(<x>10</x><y>10</y><width>300</width><height>200</height></rect></property>%1</widget></widget>)"
               R"(<customwidgets><customwidget><class>zephrin::Zephrin</class><extends>QWidget</extends>)"
               R"(<header location="global">zephrin/Zephrin.h</header></customwidget></customwidgets></ui>)")
        .arg(properties);
}

Editor::Editor() {
    // What other plugins of the machine say.
    ExpectLog(QStringLiteral("QOpenGLWidget is not supported"));
    QCoreApplication::addLibraryPath(QStringLiteral(ZEPHRIN_PLUGINS));
    QDesignerComponents::initializeResources();
    core.reset(QDesignerComponents::createFormEditor(nullptr));
    auto* window = new QWidget;
    core->setTopLevel(window);
    core->setWidgetBox(QDesignerComponents::createWidgetBox(core.get(), window));
    core->setPropertyEditor(QDesignerComponents::createPropertyEditor(core.get(), window));
    core->setObjectInspector(QDesignerComponents::createObjectInspector(core.get(), window));
    new QDesignerIntegration(core.get(), core.get());
    QDesignerComponents::initializePlugins(core.get());
}

Editor::~Editor() {
    if (form) form->setDirty(false);
    delete form;
    // The editors keep their settings in the core until they go.
    delete core->topLevel();
}

void Editor::Open(const QString& properties) {
    OpenContents(FormText(properties));
}

void Editor::OpenContents(const QString& contents) {
    if (form) form->setDirty(false);
    delete form;
    form = core->formWindowManager()->createFormWindow(core->topLevel());
    core->formWindowManager()->setActiveFormWindow(form);
    ASSERT_TRUE(form->setContents(contents));
    control = form->mainContainer()->findChild<Zephrin*>();
    ASSERT_TRUE(control);
    form->clearSelection();
    form->selectWidget(control);
    core->propertyEditor()->setObject(control);
}

void Editor::Reopen() {
    const QString contents = form->contents();
    OpenContents(contents);
}

QString Editor::Stored() const {
    QString stored;
    QXmlStreamReader xml(form->contents());
    bool ofControl = false;
    while (!xml.atEnd()) {
        if (!xml.readNextStartElement()) continue;
        const QString name = xml.attributes().value(QStringLiteral("name")).toString();
        if (xml.name() == QLatin1StringView("widget")) ofControl = name == QLatin1StringView("zephrin");
        if (xml.name() != QLatin1StringView("property")) continue;
        const QString text = TextOf(xml);
        if (ofControl && name != QLatin1StringView("geometry")) stored += name + u'=' + text + u'\n';
    }
    return stored;
}

void Editor::SetByEditor(const char* property, const QVariant& value) {
    form->cursor()->setWidgetProperty(control, QString::fromLatin1(property), value);
}

QDesignerPropertySheetExtension& Editor::Sheet() const {
    return *qt_extension<QDesignerPropertySheetExtension*>(core->extensionManager(), control);
}

QDesignerTaskMenuExtension& Editor::TaskMenu() const {
    return *qt_extension<QDesignerTaskMenuExtension*>(core->extensionManager(), control);
}

}  // namespace zephrin::test
