#pragma once

#include "ui_HostForm.h"

#include <QWidget>

class HostForm : public QWidget {
 public:
    /// A connection that is not empty takes the place of the form's own.
    explicit HostForm(const QString& connection);

 private:
    void ShowRows(const zephrin::ado::Recordset& rows);

    Ui::HostForm ui;
};
