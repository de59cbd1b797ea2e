#include "control/Host.h"

#include <QColor>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPoint>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace zephrin {

TEST(Properties, ComeWithTheirDefaults) {
    const Zephrin control;
    struct Row {
        const char* Name;
        QVariant Expected;
        bool Hidden;
    };
    const Row rows[] = {
        {"ZPBConnectionString", QString(), true},
        {"ZPBCommandType", QString(), true},
        {"ZPBCommandTimeout", 60, true},
        {"ZPBTableString", QString(), true},
        {"ConnectionTimeout", 60, true},
        {"ZPBLabelBackColor", 0x808080U, false},
        {"ZPBLabelForeColor", 0x80000005U, false},
        {"ZPBLabelFont", control.font(), false},
        {"ZPBRunTimeControlCaption", QStringLiteral("Brimlow Zephrin V1.2"), false},
        {"ZPBAllowTableSelection", true, false},
        {"ZPBAllowJoinCreation", true, false},
        {"ZPBAllowFieldSelection", true, false},
        {"ZPBShowQueryResults", true, false},
        {"ZPBCreateQueryRecordset", true, false},
        {"ZPBAllowValueSearch", true, false},
        {"ZPBAllowGroupByOption", true, false},
        {"ZPBAllowOrderByOption", true, false},
        {"ZPBAllowCalcFieldOption", true, false},
        {"ZPBAllowAndOrOverride", false, true},
        {"ZPBAllowExcelExport", true, false},
        {"ZPBDisableDefaultExportToExcel", false, false},
        {"ZPBAllowSaveDeleteQuery", true, false},
        {"ZPBAllowSQLReset", true, false},
        {"ZPBAllowCreateView", false, false},
        {"ZPBModalForm", false, false},
        {"ZPBDateFormat", QStringLiteral("mm/dd/yyyy h:mm:ss am/pm"), false},
        {"ZPBActiveConnectionString", QString(), true},
    };
    for (const Row& row : rows) {
        const int index = control.metaObject()->indexOfProperty(row.Name);
        ASSERT_GE(index, 0) << row.Name;
        const QMetaProperty property = control.metaObject()->property(index);
        EXPECT_EQ(property.read(&control), row.Expected) << row.Name;
        EXPECT_EQ(property.isDesignable(), !row.Hidden) << row.Name;
    }
    EXPECT_TRUE(control.ZPBRunTimeControlIcon().isNull());
}

TEST(Properties, TakeColoursOfTheToolkit) {
    Zephrin control;
    EXPECT_TRUE(control.setProperty("ZPBLabelBackColor", QColor(0x12, 0x34, 0x56, 0x78)));
    EXPECT_EQ(control.ZPBLabelBackColor(), 0x563412U);
    EXPECT_TRUE(control.setProperty("ZPBLabelForeColor", QColor::fromHsv(0, 255, 255)));
    EXPECT_EQ(control.ZPBLabelForeColor(), 0x0000FFU);
    EXPECT_TRUE(control.setProperty("ZPBLabelForeColor", 0x80000005U));
    EXPECT_EQ(control.ZPBLabelForeColor(), 0x80000005U);
    EXPECT_FALSE(control.setProperty("ZPBLabelForeColor", QPoint(1, 1)));
    control.setStyleSheet(QStringLiteral("* { qproperty-ZPBLabelBackColor: #0a0b0c; }"));
    control.ensurePolished();
    EXPECT_EQ(control.ZPBLabelBackColor(), 0x0C0B0AU);
}

TEST(Properties, EventsStandInTheirOrder) {
    const QMetaObject& meta = Zephrin::staticMetaObject;
    QStringList names;
    for (int index = meta.methodOffset(); index < meta.methodCount() && names.size() < 8; ++index)
        if (meta.method(index).methodType() == QMetaMethod::Signal)
            names << QString::fromLatin1(meta.method(index).name());
    EXPECT_EQ(names.join(u' '),
              QStringLiteral("QueryExecuted ConnectionComplete QuerySaved QueryDeleted ZPBUnloaded "
                             "ZPBAlreadyLoaded UserCreatedView ExportToExcel"));
}

TEST(Properties, ReportEverySettingAndTakeTheirDependentsAlong) {
    struct Row {
        const char* What;
        std::function<void(Zephrin&)> Set;
        const char* Reported;
        const char* FalseOnes;  ///< of the four that depend on each other
    };
    const Row rows[] = {
        {"the same value", [](Zephrin& c) { c.SetZPBModalForm(false); }, "ZPBModalForm", ""},
        {"by name", [](Zephrin& c) { c.setProperty("ZPBTableString", QStringLiteral("a;b")); },
         "ZPBTableString", ""},
        {"tables off", [](Zephrin& c) { c.SetZPBAllowTableSelection(false); },
         "ZPBAllowTableSelection ZPBAllowJoinCreation", "tables joins"},
        {"tables off twice",
         [](Zephrin& c) {
             c.SetZPBAllowTableSelection(false);
             c.SetZPBAllowTableSelection(false);
         },
         "ZPBAllowTableSelection ZPBAllowJoinCreation ZPBAllowTableSelection ZPBAllowJoinCreation",
         "tables joins"},
        {"joins on without tables",
         [](Zephrin& c) {
             c.SetZPBAllowTableSelection(false);
             c.SetZPBAllowJoinCreation(true);
         },
         "ZPBAllowTableSelection ZPBAllowJoinCreation", "tables joins"},
        {"tables on again leaves joins off",
         [](Zephrin& c) {
             c.SetZPBAllowTableSelection(false);
             c.SetZPBAllowTableSelection(true);
         },
         "ZPBAllowTableSelection ZPBAllowJoinCreation ZPBAllowTableSelection", "joins"},
        {"joins off", [](Zephrin& c) { c.SetZPBAllowJoinCreation(false); }, "ZPBAllowJoinCreation", "joins"},
        {"recordset off", [](Zephrin& c) { c.SetZPBCreateQueryRecordset(false); },
         "ZPBCreateQueryRecordset ZPBShowQueryResults", "recordset results"},
        {"results on without recordset",
         [](Zephrin& c) {
             c.SetZPBCreateQueryRecordset(false);
             c.SetZPBShowQueryResults(true);
         },
         "ZPBCreateQueryRecordset ZPBShowQueryResults", "recordset results"},
        {"the reserved one", [](Zephrin& c) { c.SetZPBAllowAndOrOverride(true); }, "", ""},
    };
    for (const Row& row : rows) {
        Zephrin control;
        QStringList reported;
        QObject::connect(&control, &Zephrin::PropertyChanged, &control,
                         [&](const QString& name) { reported << name; });
        row.Set(control);
        QStringList off;
        if (!control.ZPBAllowTableSelection()) off << QStringLiteral("tables");
        if (!control.ZPBAllowJoinCreation()) off << QStringLiteral("joins");
        if (!control.ZPBCreateQueryRecordset()) off << QStringLiteral("recordset");
        if (!control.ZPBShowQueryResults()) off << QStringLiteral("results");
        EXPECT_EQ(reported.join(u' ').toStdString(), row.Reported) << row.What;
        EXPECT_EQ(off.join(u' ').toStdString(), row.FalseOnes) << row.What;
        EXPECT_FALSE(control.ZPBAllowAndOrOverride()) << row.What;
    }
}

TEST(Footprint, StaysAsItIsAndIsNeverSeenAtRunTime) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* control = new Zephrin;
    layout->addWidget(control);
    const QSize footprint(900 * control->logicalDpiX() / 1440, 1110 * control->logicalDpiY() / 1440);
    window.show();
    control->show();
    control->setVisible(true);
    static_cast<QWidget*>(control)->setVisible(true);
    EXPECT_FALSE(control->isVisible());
    control->resize(500, 500);
    control->setFixedSize(300, 300);
    control->setProperty("ZPBDesignTime", true);
    EXPECT_TRUE(control->isVisible());
    EXPECT_EQ(control->size(), footprint);
    EXPECT_FALSE(control->grab().isNull());
    control->setProperty("ZPBDesignTime", false);
    EXPECT_FALSE(control->isVisible());
}

}  // namespace zephrin
