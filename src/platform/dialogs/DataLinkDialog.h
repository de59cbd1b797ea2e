#pragma once

#include "platform/ado/Provider.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace zephrin {

namespace datalink {
class Page;
}

/// Asks a person for a connection string: an embedded database file, a data source, a driver with its server,
/// or the string itself. It tests the connection on request and remembers nothing, least of all a password.
class DataLinkDialog : public QDialog {
    Q_OBJECT
 public:
    /// `present` is the string to begin with; the page that understands it is shown.
    DataLinkDialog(const QString& present, ado::ProviderSet providers, QWidget* parent = nullptr);
    ~DataLinkDialog() override;

    /// The string as the shown page now stands, password included.
    QString ConnectionString() const;

 private:
    void BuildPages();
    QLayout* BuildPreview();
    QLayout* BuildButtons();
    void ShowPresent(const QString& present);
    void Refresh();
    void TestConnection();
    void ShowOutcome(const QString& text, bool failed);
    datalink::Page* Current() const;

    ado::ProviderSet providers;
    QList<datalink::Page*> pages;
    QTabWidget* tabs;
    QLineEdit* preview;
    QLabel* outcomeIcon;
    QLabel* outcome;
    QPushButton* test;
    QPushButton* ok;
};

/// Shows the dialog and returns the string that it was closed with, or "" for Cancel.
QString PromptNewConnection(QWidget* parent, const QString& present, const ado::ProviderSet& providers);

}  // namespace zephrin
