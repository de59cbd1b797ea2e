#pragma once

#include <QFont>
#include <QIcon>
#include <QString>

namespace zephrin {

/// The values of the control's properties, each under its own name, as a new control has them.
struct ControlProperties {
    QString ZPBConnectionString;
    QString ZPBCommandType;
    int ZPBCommandTimeout = 60;
    QString ZPBTableString;
    int ConnectionTimeout = 60;
    quint32 ZPBLabelBackColor = 0x808080;
    quint32 ZPBLabelForeColor = 0x80000005;
    QFont ZPBLabelFont;
    QIcon ZPBRunTimeControlIcon;
    QString ZPBRunTimeControlCaption = QStringLiteral("Brimlow Zephrin V1.2");
    bool ZPBAllowTableSelection = true;
    bool ZPBAllowJoinCreation = true;
    bool ZPBAllowFieldSelection = true;
    bool ZPBShowQueryResults = true;
    bool ZPBCreateQueryRecordset = true;
    bool ZPBAllowValueSearch = true;
    bool ZPBAllowGroupByOption = true;
    bool ZPBAllowOrderByOption = true;
    bool ZPBAllowCalcFieldOption = true;
    bool ZPBAllowAndOrOverride = false;
    bool ZPBAllowExcelExport = true;
    bool ZPBDisableDefaultExportToExcel = false;
    bool ZPBAllowSaveDeleteQuery = true;
    bool ZPBAllowSQLReset = true;
    bool ZPBAllowCreateView = false;
    bool ZPBModalForm = false;
    QString ZPBDateFormat = QStringLiteral("mm/dd/yyyy h:mm:ss am/pm");
};

}  // namespace zephrin
