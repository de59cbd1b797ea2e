#pragma once

#include <QObject>
#include <QString>

class QComboBox;
class QGroupBox;
class QLabel;
class QLayout;
class QLineEdit;
class QListWidget;
class QPushButton;
class QWidget;

namespace zephrin {

/// The controls of a connection page, laid out on it. The page owns them.
struct ConnectionPageForm {
    explicit ConnectionPageForm(QWidget* page);

    QGroupBox* fraConnection;
    QLineEdit* txtZPGDataConnection;
    QPushButton* cmdBuildConnection;
    QComboBox* cmbZPGCommandType;
    QListWidget* lstZPGSelTables;
    QListWidget* lstZPGSelectedTables;
    QLineEdit* txtConnectionTimeout;
    QLineEdit* txtCommandTimeout;

    /// Shows `text` as the type, also one that is not among those on offer.
    void ShowCommandType(const QString& text) const;

 private:
    QLayout* BuildLists() const;
    QLayout* BuildTimeouts() const;
};

}  // namespace zephrin
