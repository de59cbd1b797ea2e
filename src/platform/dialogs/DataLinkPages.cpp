#include "platform/dialogs/DataLinkPages.h"

#include "platform/controls/QuietWheel.h"
#include "platform/dialogs/DataLinkText.h"
#include "platform/dialogs/WrapLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace zephrin::datalink {

namespace {

using Words = QLatin1StringView;

/// A field of a page: named, and heard by the page when it changes.
template <class Widget>
Widget* Named(const char* objectName, Page* page) {
    auto* widget = new Widget(page);
    widget->setObjectName(Words(objectName));
    return widget;
}

QLineEdit* Line(const char* objectName, Page* page) {
    auto* line = Named<QLineEdit>(objectName, page);
    QObject::connect(line, &QLineEdit::textChanged, page, &Page::Changed);
    return line;
}

QLineEdit* PasswordLine(const char* objectName, Page* page) {
    QLineEdit* line = Line(objectName, page);
    line->setEchoMode(QLineEdit::Password);
    line->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText);
    return line;
}

QCheckBox* Check(const char* objectName, const QString& caption, Page* page) {
    auto* check = Named<QCheckBox>(objectName, page);
    check->setText(caption);
    QObject::connect(check, &QCheckBox::toggled, page, &Page::Changed);
    return check;
}

QComboBox* Combo(const char* objectName, Page* page) {
    auto* combo = Named<QComboBox>(objectName, page);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(24);
    controls::KeepWheelAway(combo);
    QObject::connect(combo, &QComboBox::currentIndexChanged, page, &Page::Changed);
    return combo;
}

QComboBox* DialectCombo(const char* objectName, Page* page) {
    QComboBox* combo = Combo(objectName, page);
    combo->addItem(Page::tr("SQL Server"), QStringLiteral("SQL Server"));
    combo->addItem(Page::tr("Microsoft Access"), QStringLiteral("MS Access"));
    combo->addItem(Page::tr("Microsoft Excel"), QStringLiteral("Microsoft Excel Driver"));
    combo->setToolTip(Page::tr("The kind of database for which statements are written."));
    return combo;
}

QString DialectOf(const QComboBox* combo) {
    return combo->currentData().toString();
}

/// Sets the kind of database by a word that may be any of the words that stand for it.
void SetDialect(QComboBox* combo, const QString& words) {
    if (words.contains(Words("Access"), Qt::CaseInsensitive))
        combo->setCurrentIndex(1);
    else if (words.contains(Words("Excel"), Qt::CaseInsensitive))
        combo->setCurrentIndex(2);
    else
        combo->setCurrentIndex(0);
}

/// Shows the kind of database that words in the rest of the string will make of it anyway; there is nothing
/// to choose then.
void FollowWords(QComboBox* combo, const QString& text) {
    const QString said = SaidDialect(text);
    if (!said.isEmpty()) SetDialect(combo, said);
    combo->setEnabled(said.isEmpty());
}

QFormLayout* Form(Page* page) {
    auto* form = new QFormLayout(page);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    return form;
}

/// A line of explanation that takes the width that the page has.
QLabel* Hint(const QString& text, Page* page) {
    return new WrapLabel(text, page);
}

}  // namespace

// --- FilePage
// ----------------------------------------------------------------------------------------------------

FilePage::FilePage(QWidget* parent)
    : Page(parent),
      path(Line("txtFile", this)),
      kind(Combo("cmbFileKind", this)),
      dialect(DialectCombo("cmbFileDialect", this)),
      readOnly(Check("chkReadOnly", tr("Open for &reading only"), this)),
      heads(Check("chkHeads", tr("The first row holds the &names of the columns"), this)) {
    kind->addItem(tr("SQLite database"));
    kind->addItem(tr("Access database"));
    kind->addItem(tr("Excel workbook"));
    heads->setChecked(true);
    auto* browse = Named<QPushButton>("cmdBrowse", this);
    browse->setText(tr("&Browse..."));
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, &FilePage::Browse);
    connect(path, &QLineEdit::textChanged, this, &FilePage::FollowSuffix);
    connect(kind, &QComboBox::currentIndexChanged, this, &FilePage::FollowKind);
    path->setClearButtonEnabled(true);
    setTabOrder(path, browse);
    setTabOrder(browse, kind);
    auto* row = new QHBoxLayout;
    row->addWidget(path);
    row->addWidget(browse);
    QFormLayout* form = Form(this);
    form->addRow(Hint(tr("A file that needs no server and no driver."), this));
    form->addRow(tr("&File:"), row);
    // A row that is a layout has no buddy of its own.
    qobject_cast<QLabel*>(form->labelForField(row))->setBuddy(path);
    form->addRow(tr("&Kind of file:"), kind);
    form->addRow(tr("&Write SQL for:"), dialect);
    form->addRow(QString(), readOnly);
    form->addRow(QString(), heads);
    FollowKind();
}

FileKind FilePage::Kind() const {
    return FileKind(kind->currentIndex());
}

QString FilePage::Text() const {
    return ToText(FileLink{Kind(), path->text().trimmed(), DialectOf(dialect), readOnly->isChecked(),
                           heads->isChecked()});
}

bool FilePage::Show(const QString& connectionString) {
    const std::optional<FileLink> link = FileOf(connectionString);
    if (!link) return false;
    path->setText(link->Path);
    kind->setCurrentIndex(int(link->Kind));
    if (dialect->isEnabled()) SetDialect(dialect, link->Dialect);
    readOnly->setChecked(link->ReadOnly);
    heads->setChecked(link->HasHeads);
    return true;
}

QWidget* FilePage::First() const {
    return path;
}

void FilePage::Browse() {
    const QStringList filters{tr("Databases (*.db *.db3 *.sqlite *.sqlite3)"),
                              tr("Access databases (*.mdb *.accdb)"),
                              tr("Excel workbooks (*.xls *.xlsx *.xlsm)"), tr("All files (*)")};
    QString filter = filters[kind->currentIndex()];
    const QString chosen = QFileDialog::getOpenFileName(this, kind->currentText(), path->text(),
                                                        filters.join(QStringLiteral(";;")), &filter);
    if (!chosen.isEmpty()) path->setText(chosen);
}

/// The name of a file mostly says what it is.
void FilePage::FollowSuffix() {
    const QString suffix = QFileInfo(path->text().trimmed()).suffix().toLower();
    if (suffix == Words("mdb") || suffix == Words("accdb"))
        kind->setCurrentIndex(int(FileKind::AccessDatabase));
    else if (suffix.startsWith(Words("xls")))
        kind->setCurrentIndex(int(FileKind::Workbook));
    else if (suffix.startsWith(Words("db")) || suffix.startsWith(Words("sqlite")))
        kind->setCurrentIndex(int(FileKind::Database));
    FollowKind();
}

/// Only a database of the embedded engine leaves a choice of what is written to it; the others are never
/// written.
void FilePage::FollowKind() {
    const bool isOwn = Kind() == FileKind::Database;
    if (isOwn) {
        FollowWords(dialect, path->text());
    } else {
        SetDialect(dialect,
                   Kind() == FileKind::Workbook ? QStringLiteral("Excel") : QStringLiteral("Access"));
        dialect->setEnabled(false);
    }
    readOnly->setEnabled(isOwn);
    heads->setVisible(Kind() == FileKind::Workbook);
}

// --- SourcePage
// --------------------------------------------------------------------------------------------------

SourcePage::SourcePage(const QList<ado::InstalledSources::DataSource>& sources, QWidget* parent)
    : Page(parent),
      source(Combo("cmbDataSource", this)),
      user(Line("txtSourceUser", this)),
      password(PasswordLine("txtSourcePassword", this)),
      dialect(DialectCombo("cmbSourceDialect", this)) {
    for (const ado::InstalledSources::DataSource& item : sources)
        source->addItem(item.Driver.isEmpty() ? item.Name : tr("%1  (%2)").arg(item.Name, item.Driver),
                        item.Name);
    connect(this, &Page::Changed, this, [this] {
        FollowWords(dialect,
                    ToText(SourceLink{source->currentData().toString(), user->text(), password->text(), {}}));
    });
    source->setCurrentIndex(-1);
    source->setEnabled(!sources.isEmpty());
    source->setPlaceholderText(sources.isEmpty() ? tr("No data source is set up")
                                                 : tr("Choose a data source"));
    QFormLayout* form = Form(this);
    form->addRow(
        Hint(sources.isEmpty()
                 ? tr("No ODBC data source is set up on this computer. Give a driver or a string instead.")
                 : tr("An ODBC data source that is set up on this computer."),
             this));
    form->addRow(tr("Data source &name:"), source);
    form->addRow(tr("&User:"), user);
    form->addRow(tr("&Password:"), password);
    form->addRow(tr("&Write SQL for:"), dialect);
}

QString SourcePage::Text() const {
    return ToText(
        SourceLink{source->currentData().toString(), user->text(), password->text(), DialectOf(dialect)});
}

bool SourcePage::Show(const QString& connectionString) {
    const QList<Keyword> keywords = Split(connectionString);
    const int index = source->findData(ValueOf(keywords, Words("DSN")), Qt::UserRole, Qt::MatchFixedString);
    if (index < 0 || !HoldsOnly(keywords, {Words("DSN"), Words("UID"), Words("PWD"), Words("Dialect")}))
        return false;
    source->setCurrentIndex(index);
    user->setText(ValueOf(keywords, Words("UID")));
    password->setText(ValueOf(keywords, Words("PWD")));
    if (dialect->isEnabled()) SetDialect(dialect, ValueOf(keywords, Words("Dialect")));
    return true;
}

QWidget* SourcePage::First() const {
    return source;
}

// --- DriverPage
// --------------------------------------------------------------------------------------------------

DriverPage::DriverPage(const QStringList& drivers, QWidget* parent)
    : Page(parent),
      driver(Combo("cmbDriver", this)),
      server(Line("txtServer", this)),
      port(Line("txtPort", this)),
      database(Line("txtDatabase", this)),
      trusted(Check("chkTrusted", tr("&Log on as the user of this computer"), this)),
      user(Line("txtUser", this)),
      password(PasswordLine("txtPassword", this)),
      encrypt(Check("chkEncrypt", tr("&Encrypt the connection"), this)),
      trustCertificate(Check("chkTrustCertificate", tr("Ta&ke any certificate of the server's"), this)),
      dialect(DialectCombo("cmbDriverDialect", this)) {
    encrypt->setToolTip(tr("Without the tick the driver decides."));
    trustCertificate->setToolTip(tr("Nobody checks then who is at the other end."));
    for (const QString& name : drivers) driver->addItem(name, name);
    driver->setCurrentIndex(-1);
    driver->setEnabled(!drivers.isEmpty());
    driver->setPlaceholderText(drivers.isEmpty() ? tr("No driver is installed") : tr("Choose a driver"));
    port->setValidator(new QIntValidator(1, 65535, port));
    port->setPlaceholderText(tr("default"));
    port->setMaximumWidth(port->fontMetrics().horizontalAdvance(u'0') * 12);
    auto* address = new QHBoxLayout;
    auto* portLabel = new QLabel(tr("P&ort:"), this);
    portLabel->setBuddy(port);
    address->addWidget(server);
    address->addWidget(portLabel);
    address->addWidget(port);
    QFormLayout* form = Form(this);
    form->addRow(tr("&Driver:"), driver);
    form->addRow(tr("&Server:"), address);
    qobject_cast<QLabel*>(form->labelForField(address))->setBuddy(server);
    form->addRow(tr("D&atabase:"), database);
    form->addRow(QString(), trusted);
    form->addRow(tr("&User:"), user);
    form->addRow(tr("&Password:"), password);
    form->addRow(QString(), encrypt);
    form->addRow(QString(), trustCertificate);
    form->addRow(tr("&Write SQL for:"), dialect);
    connect(this, &Page::Changed, this, &DriverPage::FollowDriver);
    FollowDriver();
}

QString DriverPage::Text() const {
    return ToText(LinkWith(DialectOf(dialect)));
}

DriverLink DriverPage::LinkWith(const QString& itsDialect) const {
    return {driver->currentData().toString(),
            server->text().trimmed(),
            port->text(),
            database->text().trimmed(),
            user->text(),
            password->text(),
            trusted->isChecked(),
            encrypt->isEnabled() && encrypt->isChecked(),
            trustCertificate->isEnabled() && trustCertificate->isChecked(),
            itsDialect};
}

bool DriverPage::Show(const QString& connectionString) {
    const QList<Keyword> keywords = Split(connectionString);
    const int index =
        driver->findData(ValueOf(keywords, Words("Driver")), Qt::UserRole, Qt::MatchFixedString);
    QList<Keyword> others = keywords;
    others.removeIf(SpeaksOfEncryption);
    const bool known =
        HoldsOnly(others, {Words("Driver"), Words("Server"), Words("Port"), Words("Database"), Words("DBQ"),
                           Words("UID"), Words("PWD"), Words("Trusted_Connection"), Words("Dialect")});
    const auto ticks = ReadEncryption(ValueOf(keywords, Words("Driver")), keywords);
    if (index < 0 || !known || !ticks) return false;
    driver->setCurrentIndex(index);
    const QString address = ValueOf(keywords, Words("Server"));
    const qsizetype comma = address.lastIndexOf(u',');
    server->setText(comma < 0 ? address : address.left(comma));
    port->setText(comma < 0 ? ValueOf(keywords, Words("Port")) : address.mid(comma + 1).trimmed());
    const QString name = ValueOf(keywords, Words("Database"));
    database->setText(name.isEmpty() ? ValueOf(keywords, Words("DBQ")) : name);
    trusted->setChecked(IsYes(ValueOf(keywords, Words("Trusted_Connection"))));
    encrypt->setChecked(ticks->Encrypt);
    trustCertificate->setChecked(ticks->TrustCertificate);
    user->setText(ValueOf(keywords, Words("UID")));
    password->setText(ValueOf(keywords, Words("PWD")));
    if (dialect->isEnabled()) SetDialect(dialect, ValueOf(keywords, Words("Dialect")));
    return true;
}

QWidget* DriverPage::First() const {
    return driver;
}

void DriverPage::FollowDriver() {
    const QString name = driver->currentData().toString();
    FollowWords(dialect, ToText(LinkWith({})));
    if (dialect->isEnabled() && name.contains(Words("Access Driver"), Qt::CaseInsensitive)) {
        SetDialect(dialect, name);
        dialect->setEnabled(false);
    }
    const auto saysMore = [&name](bool encrypted) {
        return EncryptionText(name, encrypted, true) != EncryptionText(name, encrypted, false);
    };
    encrypt->setEnabled(!EncryptionText(name, true, false).isEmpty());
    trustCertificate->setEnabled(saysMore(encrypt->isEnabled() && encrypt->isChecked()));
    trusted->setEnabled(TakesTrustedLogin(name));
    const bool asks = !(trusted->isEnabled() && trusted->isChecked());
    user->setEnabled(asks);
    password->setEnabled(asks);
}

// --- TextPage
// ----------------------------------------------------------------------------------------------------

TextPage::TextPage(QWidget* parent) : Page(parent), text(Named<QPlainTextEdit>("txtString", this)) {
    text->setTabChangesFocus(true);
    text->setPlaceholderText(
        QStringLiteral("Driver={ODBC Driver 18 for SQL Server};Server=host,1433;Database=..."));
    connect(text, &QPlainTextEdit::textChanged, this, &Page::Changed);
    auto* label = new QLabel(tr("&String, as the provider or the driver takes it:"), this);
    label->setBuddy(text);
    auto* column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(text);
}

QString TextPage::Text() const {
    // A string that was pasted over several lines is one line.
    return text->toPlainText().replace(u'\n', u' ').trimmed();
}

bool TextPage::Show(const QString& connectionString) {
    text->setPlainText(connectionString);
    return true;
}

QWidget* TextPage::First() const {
    return text;
}

}  // namespace zephrin::datalink
