#include "runstate/clsBridge.h"

namespace zephrin {

void clsBridge::PassSQLandResultRecordset(int queryErrorNumber, const QString& queryError, const QString& sql,
                                          const ado::RecordsetPtr& query, const ado::RecordsetPtr& where,
                                          const ado::RecordsetPtr& having) {
    errorNumber = queryErrorNumber;
    error = queryError;
    sqlText = sql;
    results = query ? query->Clone() : std::make_shared<ado::Recordset>();
    whereValues = where;
    havingValues = having;
    Q_EMIT QueryComplete(errorNumber, error, sqlText, results, whereValues, havingValues);
}

void clsBridge::PassSavedQueryName(const QString& queryName) {
    QString name = queryName;
    Q_EMIT SaveQuery(name);
}

void clsBridge::PassDeleteQueryName(const QString& queryName) {
    QString name = queryName;
    Q_EMIT DeleteQuery(name);
}

void clsBridge::PassViewName(const QString& viewName, const QString& viewAction) {
    QString name = viewName, action = viewAction;
    Q_EMIT UserViewCreated(name, action);
}

void clsBridge::CloseZPB(const QString& loadQueryError) {
    // The rows of the last run may be many; between two showings only a host has a use for them.
    for (ado::RecordsetPtr* held : {&results, &whereValues, &havingValues}) held->reset();
    QString text = loadQueryError;
    Q_EMIT ZPBClosed(text);
}

void clsBridge::RaiseExportToExcel() { Q_EMIT ExportToExcel(); }

}  // namespace zephrin
