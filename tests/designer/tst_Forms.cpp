// A form with the control gives the same control whichever way it is brought to life: by the code that uic
// makes of it, by QUiLoader, by a property bag, and in Designer.

#include "Editor.h"
#include "ui_ConfiguredForm.h"

#include <zephrin/FormPropertyBag.h>

#include <QBuffer>
#include <QFile>
#include <QMetaProperty>
#include <QTemporaryDir>
#include <QUiLoader>

#include <gtest/gtest.h>

namespace zephrin::test {
namespace {

QString Described(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<QIcon>())
        return value.value<QIcon>().isNull() ? QString() : QStringLiteral("an icon");
    if (value.metaType() == QMetaType::fromType<QFont>()) {
        const QFont font = value.value<QFont>();
        return QStringLiteral("%1 %2 %3%4")
            .arg(font.family())
            .arg(font.pointSize())
            .arg(font.weight())
            .arg(font.italic() ? QStringLiteral(" italic") : QString());
    }
    return value.toString();
}

/// Every stored property of the control, each on a line.
std::string Described(const Zephrin& control) {
    QString text;
    const QMetaObject& type = Zephrin::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        if (!property.isStored()) continue;
        text += QString::fromLatin1(property.name()) + u'=' + Described(property.read(&control)) + u'\n';
    }
    return text.toStdString();
}

void ConfigureByHand(Zephrin& control) {
    QFont font(QStringLiteral("DejaVu Serif"), 14, QFont::Bold);
    font.setItalic(true);
    control.SetZPBConnectionString(u"Provider=SQLite;Dialect=MS Access;Data Source=C:\\Öl & \"Gas\".db"_qs);
    control.SetZPBCommandType(u"Both"_qs);
    control.SetZPBCommandTimeout(7);
    control.SetZPBTableString(u";[Customers];[Order Details]"_qs);
    control.SetConnectionTimeout(0);
    control.SetZPBLabelBackColor(0x030201);
    control.SetZPBLabelForeColor(0x80000008);
    control.SetZPBLabelFont(font);
    control.SetZPBRunTimeControlIcon(QIcon(u":/zephrin/icons/zephrin.svg"_qs));
    control.SetZPBRunTimeControlCaption(u"Fragen & Antworten"_qs);
    control.SetZPBAllowTableSelection(false);
    control.SetZPBAllowFieldSelection(false);
    control.SetZPBCreateQueryRecordset(false);
    control.SetZPBAllowValueSearch(false);
    control.SetZPBAllowGroupByOption(false);
    control.SetZPBAllowOrderByOption(false);
    control.SetZPBAllowCalcFieldOption(false);
    control.SetZPBAllowExcelExport(false);
    control.SetZPBDisableDefaultExportToExcel(true);
    control.SetZPBAllowSaveDeleteQuery(false);
    control.SetZPBAllowSQLReset(false);
    control.SetZPBAllowCreateView(true);
    control.SetZPBModalForm(true);
    control.SetZPBDateFormat(u"yyyy-mm-dd"_qs);
}

/// What the three controls of the form have to be.
struct Expected {
    Expected() {
        ConfigureByHand(configured);
        refused.SetZPBAllowTableSelection(false);
        refused.SetZPBCreateQueryRecordset(false);
    }
    void Check(const QWidget& form) const {
        for (const auto& [name, expected] :
             {std::pair{"configured", &configured}, {"refused", &refused}, {"untouched", &untouched}}) {
            const auto* control = form.findChild<Zephrin*>(QString::fromLatin1(name));
            ASSERT_TRUE(control) << name;
            EXPECT_EQ(Described(*control), Described(*expected)) << name;
        }
    }

    Zephrin configured, refused, untouched;
};

std::unique_ptr<QWidget> Load(QIODevice& device) {
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(QStringLiteral(ZEPHRIN_PLUGINS "/designer"));
    return std::unique_ptr<QWidget>(loader.load(&device));
}

std::unique_ptr<QWidget> LoadText(const QString& text) {
    QByteArray bytes = text.toUtf8();
    QBuffer buffer(&bytes);
    return Load(buffer);
}

QString FormFile() {
    return QStringLiteral(ZEPHRIN_FORM);
}

TEST(Forms, GiveTheSameControlThroughUic) {
    QWidget form;
    Ui::ConfiguredForm ui;
    ui.setupUi(&form);
    Expected().Check(form);
    form.show();
    EXPECT_FALSE(ui.configured->isVisible());
}

TEST(Forms, GiveTheSameControlThroughQUiLoader) {
    QFile file(FormFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<QWidget> form = Load(file);
    ASSERT_TRUE(form);
    Expected().Check(*form);
    form->show();
    EXPECT_FALSE(form->findChild<Zephrin*>(u"configured"_qs)->isVisible());
}

TEST(Forms, GiveTheSameControlThroughAPropertyBag) {
    const Expected expected;
    Zephrin control;
    control.ReadProperties(FormPropertyBag(FormFile(), u"configured"_qs));
    EXPECT_EQ(Described(control), Described(expected.configured));
}

TEST(Forms, GiveTheSameControlAfterDesignerHasSavedThem) {
    QFile file(FormFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QString saved;
    {
        Editor editor;
        editor.OpenContents(QString::fromUtf8(file.readAll()));
        Expected().Check(*editor.form->mainContainer());
        saved = editor.form->contents();
    }
    const std::unique_ptr<QWidget> form = LoadText(saved);
    ASSERT_TRUE(form);
    Expected().Check(*form);
}

TEST(Forms, GiveTheSameControlAfterAPropertyBagHasWrittenThem) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"form.ui"_qs);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(FormText({}).toUtf8());
    file.close();
    Zephrin configured;
    ConfigureByHand(configured);
    // Drawn by a program, an icon has no name that a form could keep.
    configured.SetZPBRunTimeControlIcon({});
    FormPropertyBag bag(path, u"zephrin"_qs);
    configured.WriteProperties(bag);
    bag.Save();

    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString written = QString::fromUtf8(file.readAll());
    const std::unique_ptr<QWidget> form = LoadText(written);
    ASSERT_TRUE(form);
    EXPECT_EQ(Described(*form->findChild<Zephrin*>()), Described(configured));
    Editor editor;
    editor.OpenContents(written);
    EXPECT_EQ(Described(*editor.control), Described(configured));
    editor.Reopen();
    EXPECT_EQ(Described(*editor.control), Described(configured));
}

// Whatever the order in which a form stores them, a flag is not True without the one it needs.
TEST(Forms, TakeDependentFlagsInAnyOrder) {
    const auto flag = [](const char* name, bool value) {
        return QStringLiteral(R"(<property name="%1" stdset="0"><bool>%2</bool></property>)")
            .arg(QLatin1StringView(name), QVariant(value).toString());
    };
    const struct {
        const char* Needed;
        const char* Flag;
    } rows[] = {{"ZPBAllowTableSelection", "ZPBAllowJoinCreation"},
                {"ZPBCreateQueryRecordset", "ZPBShowQueryResults"}};
    for (const auto& row : rows) {
        for (const bool needed : {false, true}) {
            for (const bool wanted : {false, true}) {
                for (const bool neededFirst : {false, true}) {
                    const QString first = flag(row.Needed, needed), second = flag(row.Flag, wanted);
                    const std::unique_ptr<QWidget> form =
                        LoadText(FormText(neededFirst ? first + second : second + first));
                    ASSERT_TRUE(form);
                    const auto* control = form->findChild<Zephrin*>();
                    EXPECT_EQ(control->property(row.Needed).toBool(), needed);
                    EXPECT_EQ(control->property(row.Flag).toBool(), needed && wanted)
                        << row.Flag << needed << wanted << neededFirst;
                }
            }
        }
    }
}

}  // namespace
}  // namespace zephrin::test
