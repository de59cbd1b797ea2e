#include "designer/ConnectionDialog.h"

#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace zephrin::designer {

ConnectionDialog::ConnectionDialog(QWidget& control, ZPBConnection::Writer writer, QWidget* parent)
    : QDialog(parent), page(new ZPBConnection(this)) {
    setObjectName(QStringLiteral("ConnectionDialog"));
    setWindowTitle(QStringLiteral("Connection - %1").arg(control.objectName()));
    auto* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(page);
    layout->addWidget(buttons);

    QPushButton* apply = buttons->button(QDialogButtonBox::Apply);
    apply->setEnabled(false);
    connect(page, &ZPBConnection::Changed, apply, &QWidget::setEnabled);
    connect(apply, &QPushButton::clicked, page, &ZPBConnection::PropertyPage_ApplyChanges);
    connect(buttons, &QDialogButtonBox::accepted, this, &ConnectionDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ConnectionDialog::reject);

    page->SetWriter(std::move(writer));
    // A control that has a connection is connected now, which may take a while: the dialog is shown before
    // that.
    QTimer::singleShot(0, page, [this, designed = QPointer<QWidget>(&control)] {
        if (designed) page->PropertyPage_SelectionChanged({designed.data()});
    });
}

void ConnectionDialog::accept() {
    if (page->IsChanged()) page->PropertyPage_ApplyChanges();
    QDialog::accept();
}

}  // namespace zephrin::designer
