#pragma once

#include "EventLog.h"
#include "SampleData.h"

#include <zephrin/Zephrin.h>

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QWidget>

namespace demo {

/// The host: a connection box, the options, a button for each method of the control, and the log of its
/// events.
class DemoWindow : public QWidget {
    Q_OBJECT
 public:
    explicit DemoWindow(QWidget* parent = nullptr);

    zephrin::Zephrin* Control() const { return control; }
    EventLog* Log() const { return log; }

    /// Connects with what stands in the connection box and shows the wizard.
    void ConnectAndShow();

 private:
    QWidget* MakeHead();
    QWidget* MakeConnectionBox();
    QWidget* MakeMethodBox();
    QWidget* MakeTableBox();
    QWidget* MakeQueryBox();
    void MakeConnection();
    void ChooseQuery();
    void ShowTables();

    const SampleData samples = FindSampleData();
    zephrin::Zephrin* control;
    EventLog* log;
    QComboBox* dialect = nullptr;
    QLineEdit* connection = nullptr;
    QSpinBox* maxRecords = nullptr;
    QLineEdit* table = nullptr;
    QComboBox* query = nullptr;
};

}  // namespace demo
