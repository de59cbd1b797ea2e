#pragma once

#include "platform/ado/Provider.h"

#include <QDialog>

#include <memory>

namespace zephrin {

/// Asks a person for a connection string: an embedded database file, a data source, a driver with its server, or the
/// string itself. It tests the connection on request and remembers nothing, least of all a password.
class DataLinkDialog : public QDialog {
    Q_OBJECT
 public:
    /// `present` is the string to begin with; the page that understands it is shown.
    DataLinkDialog(const QString& present, ado::ProviderSet providers, QWidget* parent = nullptr);
    ~DataLinkDialog() override;

    /// The string as the pages now stand, password included.
    QString ConnectionString() const;

 private:
    struct Pages;
    std::unique_ptr<Pages> pages;
};

/// Shows the dialog and returns the string that it was closed with, or "" for Cancel.
QString PromptNewConnection(QWidget* parent, const QString& present, const ado::ProviderSet& providers);

}  // namespace zephrin
