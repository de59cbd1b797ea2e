#include "control/Host.h"
#include "control/MapBag.h"

#include <zephrin/SettingsPropertyBag.h>

#include <QColor>
#include <QFile>
#include <QPixmap>
#include <QPoint>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <limits>

namespace zephrin {

namespace {

using test::MapBag;

constexpr const char* orderOfKeys =
    "ZPBConnectionString ZPBCommandType ZPBCommandTimeout ZPBTableString ConnectionTimeout ZPBLabelBackColor "
    "ZPBLabelForeColor ZPBAllowTableSelection ZPBAllowJoinCreation ZPBAllowFieldSelection "
    "ZPBShowQueryResults ZPBAllowValueSearch ZPBCreateQueryRecordset ZPBRunTimeControlIcon "
    "ZPBRunTimeControlCaption ZPBLabelFont ZPBAllowGroupByOption ZPBAllowOrderByOption "
    "ZPBAllowCalcFieldOption ZPBAllowAndOrOverride ZPBAllowExcelExport ZPBAllowSaveDeleteQuery "
    "ZPBAllowSQLReset ZPBAllowCreateView ZPBModalForm ZPBDateFormat ZPBDisableDefaultExportToExcel";

QString Picture(const Zephrin& control) {
    MapBag bag;
    control.WriteProperties(bag);
    return MapBag::Picture(bag.Values);
}

/// A control on which nothing is as on a new one, and flags are as no series of settings could make them.
void SetEverything(Zephrin& control) {
    MapBag bag;
    const QStringList names = QString::fromLatin1(orderOfKeys).split(u' ');
    for (const QString& name : names) {
        const QVariant value = control.property(name.toLatin1().constData());
        if (value.typeId() == QMetaType::Bool) bag.Values[name] = value.toBool() ? 0 : -1;
        if (value.typeId() == QMetaType::Int) bag.Values[name] = -7;
        if (value.typeId() == QMetaType::QString)
            bag.Values[name] = QStringLiteral(" a;b,c\"\\\n\u00e4 %1<&> ").arg(name);
    }
    bag.Values[QStringLiteral("ZPBAllowJoinCreation")] = -1;
    bag.Values[QStringLiteral("ZPBLabelBackColor")] = 0x123456U;
    bag.Values[QStringLiteral("ZPBLabelForeColor")] = 0x8000000FU;
    QFont font(QStringLiteral("Serif"), 17);
    font.setItalic(true);
    bag.Values[QStringLiteral("ZPBLabelFont")] = font;
    QPixmap pixels(16, 16);
    pixels.fill(Qt::red);
    bag.Values[QStringLiteral("ZPBRunTimeControlIcon")] = QIcon(pixels);
    control.ReadProperties(bag);
}

}  // namespace

TEST(Persistence, ReadsAndWritesTheKeysInTheirOrder) {
    Zephrin control;
    MapBag bag;
    control.ReadProperties(bag);
    EXPECT_EQ(bag.Asked.join(u' ').toStdString(), orderOfKeys);
    EXPECT_EQ(bag.Defaults[QStringLiteral("ZPBAllowJoinCreation")], QVariant(-1));
    EXPECT_EQ(bag.Defaults[QStringLiteral("ZPBDisableDefaultExportToExcel")], QVariant(0));
    EXPECT_EQ(bag.Defaults[QStringLiteral("ZPBLabelForeColor")], QVariant(0x80000005U));
    EXPECT_EQ(bag.Defaults[QStringLiteral("ZPBLabelFont")], QVariant(control.font()));
    EXPECT_TRUE(bag.Defaults[QStringLiteral("ZPBRunTimeControlIcon")].value<QIcon>().isNull());
    MapBag written;
    control.WriteProperties(written);
    EXPECT_EQ(written.Asked.join(u' ').toStdString(), orderOfKeys);
    EXPECT_EQ(MapBag::Picture(written.Values), MapBag::Picture(bag.Defaults))
        << "a new control and an empty bag are the same";
}

TEST(Persistence, ReadsPastTheRulesOfTheSinglePropertiesAndReportsNothing) {
    Zephrin control;
    const QString fresh = Picture(control);
    int reported = 0;
    QObject::connect(&control, &Zephrin::PropertyChanged, &control, [&reported] { ++reported; });
    SetEverything(control);
    EXPECT_FALSE(control.ZPBAllowTableSelection());
    EXPECT_TRUE(control.ZPBAllowJoinCreation());
    EXPECT_TRUE(control.ZPBAllowAndOrOverride()) << "cannot be set, and is stored all the same";
    EXPECT_FALSE(control.ZPBRunTimeControlIcon().isNull());
    control.InitProperties();
    EXPECT_EQ(Picture(control), fresh);
    EXPECT_TRUE(control.ZPBRunTimeControlIcon().isNull());
    EXPECT_EQ(reported, 0);
}

TEST(Persistence, ConvertsWhatABagHolds) {
    const double far = std::numeric_limits<double>::infinity();
    struct Row {
        const char* Name;
        QVariant Stored;
        QVariant Read;
    };
    const auto text = [](const char* value) { return QVariant(QString::fromUtf8(value)); };
    const Row rows[] = {
        {"ZPBModalForm", -1, true},
        {"ZPBModalForm", 1, true},
        {"ZPBModalForm", 0.25, true},
        {"ZPBModalForm", text("-1"), true},
        {"ZPBModalForm", text("True"), true},
        {"ZPBModalForm", true, true},
        {"ZPBModalForm", text("no flag"), false},
        {"ZPBModalForm", QPoint(1, 1), false},
        {"ZPBModalForm", QVariant(), false},
        {"ZPBAllowSQLReset", 0, false},
        {"ZPBAllowSQLReset", text("0"), false},
        {"ZPBAllowSQLReset", text("false"), false},
        {"ZPBAllowSQLReset", text("no flag"), true},
        {"ConnectionTimeout", text("-15"), -15},
        {"ConnectionTimeout", 2.5, 2},
        {"ConnectionTimeout", 3.5, 4},
        {"ConnectionTimeout", 3000000000LL, 60},
        {"ConnectionTimeout", 1e18, 60},
        {"ConnectionTimeout", far, 60},
        {"ConnectionTimeout", text("soon"), 60},
        {"ZPBLabelBackColor", QColor(0x12, 0x34, 0x56), 0x563412U},
        {"ZPBLabelBackColor", text("2147483653"), 0x80000005U},
        {"ZPBLabelBackColor", -2147483643, 0x80000005U},
        {"ZPBLabelBackColor", 4294967296LL, 0x808080U},
        {"ZPBLabelBackColor", text("grey"), 0x808080U},
        {"ZPBCommandType", 12, text("12")},
        {"ZPBCommandType", QPoint(1, 1), text("")},
        {"ZPBLabelFont", QFont(QStringLiteral("Serif"), 9), QFont(QStringLiteral("Serif"), 9)},
        {"ZPBLabelFont", QFont(QStringLiteral("Serif"), 9).toString(), QFont(QStringLiteral("Serif"), 9)},
        {"ZPBLabelFont", QFont(QStringLiteral("Serif"), 9, QFont::Bold).toString().toUtf8(),
         QFont(QStringLiteral("Serif"), 9, QFont::Bold)},
        {"ZPBLabelFont", text(",,,,,,,,,,"), QFont()},
        {"ZPBLabelFont", text("Serif"), QFont()},
        {"ZPBLabelFont", 5, QFont()},
    };
    for (const Row& row : rows) {
        Zephrin control;
        MapBag bag;
        bag.Values[QString::fromLatin1(row.Name)] = row.Stored;
        control.ReadProperties(bag);
        EXPECT_EQ(control.property(row.Name), row.Read)
            << row.Name << " from " << qPrintable(row.Stored.toString());
    }
}

TEST(Persistence, AnOpenWizardKeepsTheOptionsThatItWasShownWith) {
    test::Host host;
    host.Connect();
    host.control->ZPBShowZephrin();
    MapBag bag;
    bag.Values[QStringLiteral("ZPBRunTimeControlCaption")] = QStringLiteral("Another");
    host.control->ReadProperties(bag);
    host.prompts->Answers = {BoxAnswer::No};
    frmZPG::OpenForm()->close();
    ASSERT_EQ(host.prompts->Boxes.size(), 1);
    EXPECT_EQ(host.prompts->Boxes.last().Title, QStringLiteral("Brimlow Zephrin V1.2"));
    host.control->ZPBShowZephrin();
    EXPECT_EQ(frmZPG::OpenForm()->windowTitle(), QStringLiteral("Another"));
}

TEST(SettingsBag, KeepsEverythingInAPlainFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("host.ini"));
    Zephrin control;
    SetEverything(control);
    {
        QSettings settings(path, QSettings::IniFormat);
        SettingsPropertyBag bag(settings, QStringLiteral("Query Builder"));
        control.WriteProperties(bag);
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.startsWith("[Query%20Builder]")) << text.constData();
    EXPECT_TRUE(text.contains("\nZPBModalForm=-1\n"));
    EXPECT_TRUE(text.contains("\nZPBAllowSQLReset=0\n"));
    EXPECT_TRUE(text.contains("\nZPBLabelForeColor=2147483663\n"));

    QSettings settings(path, QSettings::IniFormat);
    Zephrin other;
    const SettingsPropertyBag bag(settings, QStringLiteral("Query Builder"));
    other.ReadProperties(bag);
    EXPECT_EQ(Picture(other), Picture(control));
    EXPECT_EQ(other.ZPBRunTimeControlIcon().pixmap(16).toImage(),
              control.ZPBRunTimeControlIcon().pixmap(16).toImage());

    const SettingsPropertyBag elsewhere(settings);
    other.ReadProperties(elsewhere);
    EXPECT_EQ(Picture(other), Picture(Zephrin())) << "another group knows nothing of it";
}

}  // namespace zephrin
