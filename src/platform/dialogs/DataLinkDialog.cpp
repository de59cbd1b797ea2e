#include "platform/dialogs/DataLinkDialog.h"

namespace zephrin {

struct DataLinkDialog::Pages {};

DataLinkDialog::DataLinkDialog(const QString&, ado::ProviderSet, QWidget* parent)
    : QDialog(parent), pages(std::make_unique<Pages>()) {}

DataLinkDialog::~DataLinkDialog() = default;

QString DataLinkDialog::ConnectionString() const { return {}; }

QString PromptNewConnection(QWidget* parent, const QString& present, const ado::ProviderSet& providers) {
    DataLinkDialog dialog(present, providers, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.ConnectionString() : QString();
}

}  // namespace zephrin
