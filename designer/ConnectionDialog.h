#pragma once

#include <zephrin/ZPBConnection.h>

#include <QDialog>

namespace zephrin::designer {

/// The connection page of one control, with OK, Cancel and Apply under it.
class ConnectionDialog : public QDialog {
    Q_OBJECT

 public:
    /// `writer` takes what is applied to the control.
    ConnectionDialog(QWidget& control, ZPBConnection::Writer writer, QWidget* parent);

 public Q_SLOTS:
    void accept() override;

 private:
    ZPBConnection* page;
};

}  // namespace zephrin::designer
