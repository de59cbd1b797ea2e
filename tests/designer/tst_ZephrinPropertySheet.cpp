#include "Editor.h"

#include <QAction>
#include <QColor>
#include <QCoreApplication>
#include <QDesignerFormWindowCursorInterface>
#include <QDesignerFormWindowManagerInterface>
#include <QDesignerPropertyEditorInterface>
#include <QMetaProperty>
#include <QUndoStack>

#include <gtest/gtest.h>

namespace zephrin::test {
namespace {

QString Property(const char* name, const char* element, const QString& text) {
    return QStringLiteral(R"(<property name="%1" stdset="0"><%2>%3</%2></property>)")
        .arg(QLatin1StringView(name), QLatin1StringView(element), text);
}

TEST(ZephrinPropertySheet, ShowsEveryPropertyInItsGroupWithItsType) {
    Editor editor;
    editor.Open();
    const QDesignerPropertySheetExtension& sheet = editor.Sheet();
    const QMetaObject& type = Zephrin::staticMetaObject;
    QString shown, hidden;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QString name = QString::fromLatin1(type.property(i).name());
        const int index = sheet.indexOf(name);
        ASSERT_GE(index, 0) << qPrintable(name);
        if (!sheet.isVisible(index)) {
            hidden += name + u' ';
            continue;
        }
        EXPECT_TRUE(sheet.hasReset(index)) << qPrintable(name);
        const QString kind =
            QString::fromLatin1(sheet.property(index).typeName()).section(QStringLiteral("::"), -1);
        shown += name + u'|' + sheet.propertyGroup(index).mid(9) + u'|' + kind + u'\n';
    }
    EXPECT_EQ(shown.toStdString(),
              "ZPBLabelBackColor|look|QColor\n"
              "ZPBLabelForeColor|look|QColor\n"
              "ZPBLabelFont|look|QFont\n"
              "ZPBRunTimeControlIcon|look|PropertySheetIconValue\n"
              "ZPBRunTimeControlCaption|look|PropertySheetStringValue\n"
              "ZPBAllowTableSelection|tabs|bool\n"
              "ZPBAllowJoinCreation|tabs|bool\n"
              "ZPBAllowFieldSelection|tabs|bool\n"
              "ZPBShowQueryResults|tabs|bool\n"
              "ZPBCreateQueryRecordset|query|bool\n"
              "ZPBAllowValueSearch|query|bool\n"
              "ZPBAllowGroupByOption|query|bool\n"
              "ZPBAllowOrderByOption|query|bool\n"
              "ZPBAllowCalcFieldOption|query|bool\n"
              "ZPBAllowExcelExport|export and files|bool\n"
              "ZPBDisableDefaultExportToExcel|export and files|bool\n"
              "ZPBAllowSaveDeleteQuery|export and files|bool\n"
              "ZPBAllowSQLReset|query|bool\n"
              "ZPBAllowCreateView|query|bool\n"
              "ZPBModalForm|look|bool\n"
              "ZPBDateFormat|query|PropertySheetStringValue\n");
    EXPECT_EQ(hidden.toStdString(),
              "ZPBConnectionString ZPBCommandType ZPBCommandTimeout ZPBTableString ConnectionTimeout "
              "ZPBAllowAndOrOverride ZPBActiveConnectionString ZPBTableCollection ");
    EXPECT_FALSE(sheet.isVisible(editor.IndexOf("ZPBDesignTime")));
}

// A form that stores a value shows it, stores it again as it was, and gives the control the same when opened
// again.
TEST(ZephrinPropertySheet, StoresWhatItRead) {
    const struct {
        const char* Name;
        const char* Element;
        QString Text;
        QString Stored;
        QVariant Value;
    } rows[] = {
        {"ZPBConnectionString", "cstring", u"Provider=SQLite;a=ü&lt;"_qs, u"Provider=SQLite;a=ü<"_qs,
         u"Provider=SQLite;a=ü<"_qs},
        {"ZPBConnectionString", "string", u"from elsewhere"_qs, u"from elsewhere"_qs, u"from elsewhere"_qs},
        {"ZPBCommandType", "cstring", u"Both"_qs, u"Both"_qs, u"Both"_qs},
        {"ZPBTableString", "cstring", u";[a];[b]"_qs, u";[a];[b]"_qs, u";[a];[b]"_qs},
        {"ZPBCommandTimeout", "number", u"7"_qs, u"7"_qs, 7},
        {"ConnectionTimeout", "number", u"0"_qs, u"0"_qs, 0},
        {"ZPBLabelBackColor", "color", u"<red>1</red><green>2</green><blue>3</blue>"_qs, u"1,2,3"_qs,
         0x030201U},
        {"ZPBLabelBackColor", "UInt", u"2147483663"_qs, u"2147483663"_qs, 0x8000000FU},
        {"ZPBLabelForeColor", "UInt", u"2147483656"_qs, u"2147483656"_qs, 0x80000008U},
        {"ZPBLabelForeColor", "UInt", u"255"_qs, u"255,0,0"_qs, 0xFFU},
        {"ZPBRunTimeControlCaption", "string", u"Ask"_qs, u"Ask"_qs, u"Ask"_qs},
        {"ZPBDateFormat", "string", u"yyyy"_qs, u"yyyy"_qs, u"yyyy"_qs},
        {"ZPBAllowJoinCreation", "bool", u"false"_qs, u"false"_qs, false},
        {"ZPBModalForm", "bool", u"true"_qs, u"true"_qs, true},
    };
    Editor editor;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        const QString expected = QString::fromLatin1(row.Name) + u'=' + row.Stored + u'\n';
        editor.Open(Property(row.Name, row.Element, row.Text));
        EXPECT_EQ(editor.control->property(row.Name), row.Value);
        EXPECT_EQ(editor.Stored(), expected);
        editor.Reopen();
        EXPECT_EQ(editor.control->property(row.Name), row.Value);
        EXPECT_EQ(editor.Stored(), expected);
    }
}

TEST(ZephrinPropertySheet, LetsDesignerSetUndoAndReset) {
    const struct {
        const char* Name;
        QVariant Set;
        QVariant Value;
        QString Stored;
    } rows[] = {
        {"ZPBLabelBackColor", QColor(1, 2, 3), 0x030201U, u"1,2,3"_qs},
        {"ZPBLabelForeColor", QColor(Qt::red), 0xFFU, u"255,0,0"_qs},
        {"ZPBRunTimeControlCaption", u"Ask"_qs, u"Ask"_qs, u"Ask"_qs},
        {"ZPBAllowTableSelection", false, false, u"false"_qs},
        {"ZPBAllowCreateView", true, true, u"true"_qs},
        {"ZPBDateFormat", u"yyyy"_qs, u"yyyy"_qs, u"yyyy"_qs},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        Editor editor;
        editor.Open();
        const QVariant initial = editor.control->property(row.Name);
        const QString stored = QString::fromLatin1(row.Name) + u'=' + row.Stored + u'\n';
        editor.SetByEditor(row.Name, row.Set);
        EXPECT_EQ(editor.control->property(row.Name), row.Value);
        EXPECT_EQ(editor.Stored(), stored);
        EXPECT_TRUE(editor.form->isDirty());
        editor.History().undo();
        EXPECT_EQ(editor.control->property(row.Name), initial);
        EXPECT_EQ(editor.Stored(), QString());
        editor.History().redo();
        EXPECT_EQ(editor.control->property(row.Name), row.Value);
        editor.form->cursor()->resetWidgetProperty(editor.control, QString::fromLatin1(row.Name));
        EXPECT_EQ(editor.control->property(row.Name), initial);
        EXPECT_EQ(editor.Stored(), QString());
        editor.History().undo();
        EXPECT_EQ(editor.Stored(), stored);
    }
}

TEST(ZephrinPropertySheet, KeepsASystemColourUntilItIsEdited) {
    Editor editor;
    editor.Open(Property("ZPBLabelForeColor", "UInt", u"2147483656"_qs));
    editor.SetByEditor("ZPBLabelForeColor", QColor(Qt::black));
    EXPECT_EQ(editor.control->ZPBLabelForeColor(), 0U);
    editor.History().undo();
    EXPECT_EQ(editor.control->ZPBLabelForeColor(), 0x80000008U);
    EXPECT_EQ(editor.Stored(), u"ZPBLabelForeColor=2147483656\n"_qs);
}

// The form stores what was asked for, and what the editor shows is what the running program will have.
TEST(ZephrinPropertySheet, GivesAFlagItsValueAgainWithTheOneItNeeds) {
    const struct {
        const char* Needed;
        const char* Flag;
    } rows[] = {{"ZPBAllowTableSelection", "ZPBAllowJoinCreation"},
                {"ZPBCreateQueryRecordset", "ZPBShowQueryResults"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Flag);
        Editor editor;
        editor.Open();
        const auto flag = [&] { return editor.control->property(row.Flag).toBool(); };
        const int index = editor.IndexOf(row.Flag);
        editor.SetByEditor(row.Needed, false);
        EXPECT_FALSE(flag());
        EXPECT_FALSE(editor.Sheet().isEnabled(index));
        EXPECT_EQ(editor.Stored(), QString::fromLatin1(row.Needed) + u"=false\n"_qs);
        editor.SetByEditor(row.Flag, true);
        EXPECT_EQ(editor.Stored(), QString::fromLatin1(row.Needed) + u"=false\n"_qs) << "was refused";
        editor.SetByEditor(row.Needed, true);
        EXPECT_TRUE(flag());
        EXPECT_TRUE(editor.Sheet().isEnabled(index));
        editor.SetByEditor(row.Flag, false);
        editor.SetByEditor(row.Needed, false);
        editor.SetByEditor(row.Needed, true);
        EXPECT_FALSE(flag()) << "was switched off by itself";
        while (editor.History().canUndo()) editor.History().undo();
        EXPECT_TRUE(flag());
        EXPECT_EQ(editor.Stored(), QString());
    }
}

TEST(ZephrinPropertySheet, LivesWithCopyAndPaste) {
    Editor editor;
    editor.Open(Property("ZPBLabelBackColor", "color", u"<red>1</red><green>2</green><blue>3</blue>"_qs) +
                Property("ZPBConnectionString", "cstring", u"Provider=SQLite"_qs));
    const QDesignerFormWindowManagerInterface* manager = editor.core->formWindowManager();
    QCoreApplication::processEvents();
    manager->action(QDesignerFormWindowManagerInterface::CopyAction)->trigger();
    QCoreApplication::processEvents();
    manager->action(QDesignerFormWindowManagerInterface::PasteAction)->trigger();
    const auto controls = editor.form->mainContainer()->findChildren<Zephrin*>();
    ASSERT_EQ(controls.size(), 2);
    for (const Zephrin* control : controls) {
        EXPECT_EQ(control->ZPBLabelBackColor(), 0x030201U);
        EXPECT_EQ(control->ZPBConnectionString(), u"Provider=SQLite"_qs);
    }
    // Both at once.
    for (Zephrin* control : controls) editor.form->selectWidget(control);
    editor.form->cursor()->setProperty(u"ZPBLabelBackColor"_qs, QColor(4, 5, 6));
    for (const Zephrin* control : controls) EXPECT_EQ(control->ZPBLabelBackColor(), 0x060504U);
}

}  // namespace
}  // namespace zephrin::test
