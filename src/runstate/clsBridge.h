#pragma once

#include <zephrin/ado/Recordset.h>

#include <QObject>
#include <QString>

namespace zephrin {

/// Carries what happened in the wizard to the control, which raises its own events from it. Arguments go by reference:
/// what a host writes into them reaches the members of this object and nothing else.
class clsBridge : public QObject {
    Q_OBJECT
 public:
    using QObject::QObject;

    void PassSQLandResultRecordset(int queryErrorNumber, const QString& queryError, const QString& sql,
                                   const ado::RecordsetPtr& query, const ado::RecordsetPtr& where,
                                   const ado::RecordsetPtr& having);
    void PassSavedQueryName(const QString& queryName);
    void PassDeleteQueryName(const QString& queryName);
    void PassViewName(const QString& viewName, const QString& viewAction);
    void CloseZPB(const QString& loadQueryError);
    void RaiseExportToExcel();

 Q_SIGNALS:
    void QueryComplete(int& queryErrorNumber, QString& queryError, QString& sql,
                       zephrin::ado::RecordsetPtr& queryResults, zephrin::ado::RecordsetPtr& whereValues,
                       zephrin::ado::RecordsetPtr& havingValues);
    void SaveQuery(QString& queryName);
    void DeleteQuery(QString& queryName);
    void UserViewCreated(QString& viewName, QString& action);
    void ZPBClosed(QString& queryLoadError);
    void ExportToExcel();

 private:
    int errorNumber = 0;
    QString error, sqlText;
    ado::RecordsetPtr results, whereValues, havingValues;
};

}  // namespace zephrin
