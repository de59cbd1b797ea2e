#include "OptionPanel.h"

#include <QGridLayout>

namespace demo {

namespace {

struct Flag {
    const char* Property;
    const char* Caption;
};

constexpr Flag flags[] = {
    {"ZPBAllowTableSelection", QT_TR_NOOP("Table selection")},
    {"ZPBAllowJoinCreation", QT_TR_NOOP("Join creation")},
    {"ZPBAllowFieldSelection", QT_TR_NOOP("Field selection")},
    {"ZPBCreateQueryRecordset", QT_TR_NOOP("Create recordset")},
    {"ZPBShowQueryResults", QT_TR_NOOP("Show results")},
    {"ZPBAllowValueSearch", QT_TR_NOOP("Value search")},
    {"ZPBAllowGroupByOption", QT_TR_NOOP("Group by")},
    {"ZPBAllowOrderByOption", QT_TR_NOOP("Order by")},
    {"ZPBAllowCalcFieldOption", QT_TR_NOOP("Calculated fields")},
    {"ZPBAllowExcelExport", QT_TR_NOOP("Excel export")},
    {"ZPBDisableDefaultExportToExcel", QT_TR_NOOP("Host exports itself")},
    {"ZPBAllowSaveDeleteQuery", QT_TR_NOOP("Save and delete")},
    {"ZPBAllowSQLReset", QT_TR_NOOP("SQL reset")},
    {"ZPBAllowCreateView", QT_TR_NOOP("Create view")},
    {"ZPBModalForm", QT_TR_NOOP("Modal wizard")},
};

}  // namespace

OptionPanel::OptionPanel(zephrin::Zephrin* zephrin, QWidget* parent)
    : QGroupBox(tr("Options of the next showing"), parent), control(zephrin) {
    auto* layout = new QGridLayout(this);
    for (const Flag& flag : flags) {
        auto* box = new QCheckBox(tr(flag.Caption), this);
        box->setObjectName(QLatin1StringView(flag.Property));
        box->setToolTip(box->objectName());
        const int index = static_cast<int>(boxes.size());
        layout->addWidget(box, index / 3, index % 3);
        boxes << box;
        connect(box, &QCheckBox::clicked, this, [this, name = flag.Property](bool checked) {
            control->setProperty(name, checked);
            Refresh();
        });
    }
    Refresh();
}

void OptionPanel::Refresh() {
    for (QCheckBox* box : std::as_const(boxes))
        box->setChecked(control->property(box->objectName().toLatin1().constData()).toBool());
}

}  // namespace demo
