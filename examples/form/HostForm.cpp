#include "HostForm.h"

using zephrin::Zephrin;
using zephrin::ado::RecordsetPtr;

namespace {

/// A table widget is for a look at the first rows; a host with more to show writes a model over the
/// recordset.
constexpr int mostRows = 200;

}  // namespace

HostForm::HostForm(const QString& connection) {
    ui.setupUi(this);
    if (!connection.isEmpty()) ui.builder->SetZPBConnectionString(connection);

    connect(ui.buildButton, &QPushButton::clicked, this, [this] { ui.builder->ZPBMakeConnection(); });
    connect(ui.builder, &Zephrin::ConnectionComplete, this,
            [this](int& number, QString& description, QString&) {
                if (number == 0)
                    ui.builder->ZPBShowZephrin();
                else
                    ui.statementEdit->setPlainText(description);
            });
    connect(ui.builder, &Zephrin::QueryExecuted, this,
            [this](int& number, QString& error, QString& sql, RecordsetPtr& rows) {
                ui.statementEdit->setPlainText(number == 0 ? sql.trimmed() : error);
                if (number == 0) ShowRows(*rows);
            });
}

void HostForm::ShowRows(const zephrin::ado::Recordset& rows) {
    const int fields = rows.FieldCount();
    const int shown = static_cast<int>(qMin<qint64>(rows.RecordCount(), mostRows));
    ui.rowsTable->clear();
    ui.rowsTable->setColumnCount(fields);
    ui.rowsTable->setRowCount(shown);
    for (int field = 0; field < fields; ++field) {
        ui.rowsTable->setHorizontalHeaderItem(field, new QTableWidgetItem(rows.FieldAt(field).Name));
        for (int row = 0; row < shown; ++row)
            ui.rowsTable->setItem(row, field, new QTableWidgetItem(rows.TextAt(row, field)));
    }
    ui.countLabel->setText(tr("%n row(s)", nullptr, static_cast<int>(rows.RecordCount())));
}
