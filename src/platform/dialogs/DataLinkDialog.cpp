#include "platform/dialogs/DataLinkDialog.h"

#include "platform/ado/Connection.h"
#include "platform/dialogs/DataLinkPages.h"
#include "platform/dialogs/DataLinkText.h"
#include "platform/dialogs/LiveWait.h"
#include "platform/dialogs/WrapLabel.h"

#include <zephrin/ado/Recordset.h>

#include <QAccessible>
#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

namespace zephrin {

namespace {

/// How long a person waits for a test, in seconds.
constexpr int TestTime = 15;

/// The hourglass, for as long as it lives.
struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

/// Keeps the windows alive while `connection` makes the user wait.
void LetLive(ado::Connection& connection) {
    constexpr qint64 felt = 300;  // milliseconds
    const auto wait = std::make_shared<std::unique_ptr<LiveWait>>();
    connection.SetWatcher([wait](const ado::Progress& progress) {
        if (progress.Elapsed < felt && !*wait) return true;
        if (!*wait) *wait = std::make_unique<LiveWait>();
        (*wait)->Begin();
        return (*wait)->Breathe();
    });
}

ado::InstalledSources InstalledOf(const ado::ProviderSet& providers) {
    ado::InstalledSources all;
    for (const auto& provider : providers) {
        const ado::InstalledSources some = provider->Installed();
        all.Drivers += some.Drivers;
        all.DataSources += some.DataSources;
    }
    return all;
}

}  // namespace

DataLinkDialog::DataLinkDialog(const QString& present, ado::ProviderSet itsProviders, QWidget* parent)
    : QDialog(parent),
      providers(std::move(itsProviders)),
      tabs(new QTabWidget(this)),
      // The Tab key visits them in the order in which they are made, after the pages.
      preview(nullptr),
      outcomeIcon(nullptr),
      outcome(nullptr),
      test(nullptr),
      ok(nullptr) {
    setObjectName(QStringLiteral("DataLinkDialog"));
    setWindowTitle(tr("Database Connection"));
    setModal(true);
    auto* column = new QVBoxLayout(this);
    BuildPages();
    column->addWidget(tabs, 1);
    column->addLayout(BuildPreview());
    column->addLayout(BuildButtons());
    connect(tabs, &QTabWidget::currentChanged, this, &DataLinkDialog::Refresh);
    for (datalink::Page* page : std::as_const(pages))
        connect(page, &datalink::Page::Changed, this, &DataLinkDialog::Refresh);
    resize(fontMetrics().averageCharWidth() * 84, sizeHint().height());
    ShowPresent(present);
}

DataLinkDialog::~DataLinkDialog() = default;

void DataLinkDialog::BuildPages() {
    const ado::InstalledSources installed = InstalledOf(providers);
    tabs->setObjectName(QStringLiteral("tabPages"));
    tabs->setAccessibleName(tr("Ways to connect"));
    // Heads behind scroll buttons are overlooked; the window is as wide as all of them.
    tabs->setUsesScrollButtons(false);
    const auto add = [this](datalink::Page* page, const char* name, const QString& caption) {
        page->setObjectName(QLatin1StringView(name));
        pages.append(page);
        tabs->addTab(page, caption);
    };
    add(new datalink::FilePage(tabs), "pageFile", tr("Database File"));
    add(new datalink::SourcePage(installed.DataSources, tabs), "pageSource", tr("Data Source"));
    add(new datalink::DriverPage(installed.Drivers, tabs), "pageDriver", tr("Driver and Server"));
    add(new datalink::TextPage(tabs), "pageString", tr("Connection String"));
}

QLayout* DataLinkDialog::BuildPreview() {
    preview = new QLineEdit(this);
    outcomeIcon = new QLabel(this);
    outcome = new WrapLabel(QString(), this);
    preview->setObjectName(QStringLiteral("txtPreview"));
    preview->setReadOnly(true);
    preview->setToolTip(tr("The string that is returned. Passwords are shown as dots."));
    auto* label = new QLabel(tr("&Connection string:"), this);
    label->setBuddy(preview);
    outcome->setObjectName(QStringLiteral("lblOutcome"));
    outcome->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    outcome->setMinimumHeight(outcome->fontMetrics().lineSpacing() * 3);
    outcome->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    outcomeIcon->setAlignment(Qt::AlignTop);
    auto* answer = new QHBoxLayout;
    answer->addWidget(outcomeIcon);
    answer->addWidget(outcome, 1);
    auto* column = new QVBoxLayout;
    column->addWidget(label);
    column->addWidget(preview);
    column->addLayout(answer);
    return column;
}

QLayout* DataLinkDialog::BuildButtons() {
    test = new QPushButton(tr("&Test Connection"), this);
    test->setObjectName(QStringLiteral("cmdTest"));
    test->setAutoDefault(false);
    connect(test, &QPushButton::clicked, this, &DataLinkDialog::TestConnection);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok = box->button(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("cmdOK"));
    box->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(test);
    row->addStretch();
    row->addWidget(box);
    return row;
}

void DataLinkDialog::ShowPresent(const QString& present) {
    datalink::Page* shown = pages.front();
    if (datalink::OverrulesWords(present)) {
        // No page but the string's own lets its user say that.
        shown = pages.back();
        shown->Show(present);
    } else if (!present.isEmpty()) {
        for (datalink::Page* page : std::as_const(pages)) {
            if (!page->Show(present)) continue;
            shown = page;
            break;
        }
    }
    tabs->setCurrentWidget(shown);
    shown->First()->setFocus();
    Refresh();
}

datalink::Page* DataLinkDialog::Current() const {
    return pages.value(tabs->currentIndex());
}

QString DataLinkDialog::ConnectionString() const {
    return Current()->Text();
}

void DataLinkDialog::Refresh() {
    const QString text = ConnectionString();
    preview->setText(datalink::Masked(text));
    preview->setCursorPosition(0);
    test->setEnabled(!text.isEmpty());
    ok->setEnabled(!text.isEmpty());
    // An answer holds for the string that was tested, and for no other.
    outcome->clear();
    outcome->setAccessibleName(tr("Outcome of the test"));
    outcomeIcon->clear();
}

void DataLinkDialog::TestConnection() {
    const WaitCursor waiting;
    ShowOutcome(tr("Connecting..."), false);
    outcomeIcon->clear();
    outcome->repaint();
    const QPointer<DataLinkDialog> alive(this);
    ado::Connection connection(providers);
    LetLive(connection);
    connection.SetConnectionTimeout(TestTime);
    connection.SetCommandTimeout(TestTime);
    try {
        connection.Open(ConnectionString());
        const qint64 tables = connection.OpenSchema(ado::Schema::Tables)->RecordCount();
        if (!alive) return;
        QString answer = tr("The connection works. Tables and views: %1.").arg(tables);
        if (!datalink::SaysDialect(ConnectionString()))
            answer +=
                u' ' +
                tr("But the string doesn't say for which database to write SQL: add Dialect=SQL Server, "
                   "Dialect=MS Access or Dialect=Microsoft Excel Driver.");
        ShowOutcome(answer, false);
    } catch (const ado::Error& error) {
        if (!alive) return;
        ShowOutcome(tr("%1\n(%2, number %3)").arg(error.Description(), error.Source()).arg(error.Number()),
                    true);
    }
}

void DataLinkDialog::ShowOutcome(const QString& text, bool failed) {
    const auto icon = failed ? QStyle::SP_MessageBoxCritical : QStyle::SP_DialogApplyButton;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    outcomeIcon->setPixmap(style()->standardIcon(icon, nullptr, this).pixmap(size));
    outcome->setText(text);
    outcome->setAccessibleName(text);
    // Who doesn't see it hears it.
    QAccessibleEvent alert(outcome, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QString PromptNewConnection(QWidget* parent, const QString& present, const ado::ProviderSet& providers) {
    // The parent may die while the dialog is open, and would take it along.
    const QPointer<DataLinkDialog> dialog = new DataLinkDialog(present, providers, parent);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QString chosen = accepted && dialog ? dialog->ConnectionString() : QString();
    delete dialog;
    return chosen;
}

}  // namespace zephrin
