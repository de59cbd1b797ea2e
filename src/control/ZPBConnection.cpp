#include "control/ConnectionPageForm.h"
#include "control/ConnectionPageState.h"
#include "platform/ado/providers/AllProviders.h"
#include "platform/dialogs/DefaultPrompts.h"
#include "wizard/Hourglass.h"
#include "wizard/LiveWork.h"

#include <zephrin/ZPBConnection.h>

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

namespace zephrin {

namespace {

constexpr int SelectAgainAfter = 50;  // milliseconds

std::unique_ptr<ZPGGlobalDeclarations> MakeRun() {
    const ado::ProviderSet providers = ado::providers::AllProviders();
    auto run =
        std::make_unique<ZPGGlobalDeclarations>(providers, std::make_shared<DefaultPrompts>(providers));
    run->Surroundings = std::make_shared<LiveWork>();
    return run;
}

/// The settings of a control, read by name; what it does not have is as on a new one.
ConnectionSettings SettingsOf(const QObject& control) {
    const auto read = [&control](const char* name, auto initial) {
        const QVariant value = control.property(name);
        return value.canConvert<decltype(initial)>() ? value.value<decltype(initial)>() : initial;
    };
    ConnectionSettings settings;
    settings.ZPBCommandTimeout = read("ZPBCommandTimeout", settings.ZPBCommandTimeout);
    settings.ConnectionTimeout = read("ConnectionTimeout", settings.ConnectionTimeout);
    settings.ZPBConnectionString = read("ZPBConnectionString", QString());
    settings.ZPBCommandType = read("ZPBCommandType", QString());
    settings.ZPBTableString = read("ZPBTableString", QString());
    return settings;
}

void SetProperties(QObject& control, const QList<std::pair<QByteArray, QVariant>>& values) {
    const QPointer<QObject> alive(&control);
    for (const auto& [name, value] : values)
        if (alive) alive->setProperty(name.constData(), value);
}

QStringList Texts(const QListWidget* list) {
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) texts << list->item(row)->text();
    return texts;
}

void ShowItems(QListWidget* list, const QStringList& items) {
    if (Texts(list) == items) return;
    list->clear();
    list->addItems(items);
}

void ShowText(QLineEdit* line, const QString& text) {
    if (line->text() != text) line->setText(text);
}

QList<int> SelectedRows(const QListWidget* list) {
    QList<int> rows;
    const QModelIndexList indexes = list->selectionModel()->selectedRows();
    for (const QModelIndex& index : indexes) rows << index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

}  // namespace

/// Binds the controls to the state: a handler hands the state what the user did, and shows the state again.
class Q_DECL_HIDDEN ZPBConnection::Private {
 public:
    explicit Private(ZPBConnection& owner);

    void SelectionChanged(QObject* control);
    void ApplyChanges();
    std::shared_ptr<Prompts> DefaultUserPrompts();

    ZPBConnection& page;
    ConnectionPageForm form;
    std::shared_ptr<ConnectionPageState> state = std::make_shared<ConnectionPageState>(MakeRun());
    std::shared_ptr<Prompts> prompts = DefaultUserPrompts();
    Writer writer = SetProperties;
    QPointer<QObject> selected;

 private:
    void cmdBuildConnection_Click();
    void cmbZPGCommandType_Change(const QString& type);
    void cmbZPGCommandType_Click(int index);
    void lstZPGSelTables_Click();
    void TimeoutChange(bool isNumber);

    /// Runs something that may connect, shows the outcome and tells of a failure. The page may be gone after
    /// it.
    void Connect(const std::function<ConnectionErrors(ConnectionPageState&)>& work);
    void SelectChosen();
    /// Shows the state, and at the end tells of the mark when that has changed.
    void Show();

    bool showing = false;
    bool marked = false;
    /// The choice was seen as a change, and will be heard of as a click, too.
    bool changeSeen = false;
};

ZPBConnection::Private::Private(ZPBConnection& owner) : page(owner), form(&owner) {
    const auto unlessShowing = [this](auto handler) {
        return [this, handler](const auto&... arguments) {
            if (!showing) handler(arguments...);
        };
    };
    connect(form.txtZPGDataConnection, &QLineEdit::textChanged, &page,
            unlessShowing([this](const QString& text) {
                state->ConnectionTextChanged(text);
                Show();
            }));
    connect(form.cmdBuildConnection, &QPushButton::clicked, &page, [this] { cmdBuildConnection_Click(); });
    connect(form.cmbZPGCommandType, &QComboBox::currentTextChanged, &page,
            unlessShowing([this](const QString& type) { cmbZPGCommandType_Change(type); }));
    connect(form.cmbZPGCommandType, &QComboBox::activated, &page,
            [this](int index) { cmbZPGCommandType_Click(index); });
    connect(form.lstZPGSelTables, &QListWidget::itemSelectionChanged, &page,
            unlessShowing([this] { lstZPGSelTables_Click(); }));
    connect(
        form.txtConnectionTimeout, &QLineEdit::textChanged, &page,
        unlessShowing([this](const QString& text) { TimeoutChange(state->ConnectionTimeoutChanged(text)); }));
    connect(
        form.txtCommandTimeout, &QLineEdit::textChanged, &page,
        unlessShowing([this](const QString& text) { TimeoutChange(state->CommandTimeoutChanged(text)); }));
}

std::shared_ptr<Prompts> ZPBConnection::Private::DefaultUserPrompts() {
    return std::make_shared<DefaultPrompts>(state->Run().Providers);
}

void ZPBConnection::Private::SelectionChanged(QObject* control) {
    if (IsBusy(state->Run())) {
        // Nobody waits for the former control's connection any more.
        StopWork(state->Run());
        const QPointer<QObject> next(control);
        QTimer::singleShot(SelectAgainAfter, &page, [this, next] { SelectionChanged(next); });
        return;
    }
    selected = control;
    const QVariant caption = control ? control->property("ZPBRunTimeControlCaption") : QVariant();
    if (caption.isValid()) state->Run().Options.gRunTimeCaption = caption.toString();
    const ConnectionSettings settings = control ? SettingsOf(*control) : ConnectionSettings();
    Connect([&settings](ConnectionPageState& run) { return run.Fill(settings); });
}

void ZPBConnection::Private::ApplyChanges() {
    if (!selected) return;
    const QPointer<ZPBConnection> alive(&page);
    const Writer write = writer;
    write(*selected, state->Apply());
    if (alive) Show();
}

void ZPBConnection::Private::cmdBuildConnection_Click() {
    state->BuildConnection();
    const QPointer<ZPBConnection> alive(&page);
    Show();
    if (!alive) return;
    const std::shared_ptr<Prompts> asked = prompts;
    const QString chosen = asked->PromptNewConnection(state->txtZPGDataConnection);
    if (!alive || chosen.isEmpty() || chosen == state->txtZPGDataConnection) return;
    state->ConnectionTextChanged(chosen);
    Show();
}

void ZPBConnection::Private::cmbZPGCommandType_Change(const QString& type) {
    changeSeen = true;
    Connect([&type](ConnectionPageState& run) { return run.CommandTypeChanged(type); });
}

void ZPBConnection::Private::cmbZPGCommandType_Click(int index) {
    if (std::exchange(changeSeen, false)) return;
    // The same type again: that is how a user tries anew.
    const QString type = form.cmbZPGCommandType->itemText(index);
    Connect([&type](ConnectionPageState& run) { return run.CommandTypeChanged(type); });
}

void ZPBConnection::Private::lstZPGSelTables_Click() {
    const QList<int> rows = SelectedRows(form.lstZPGSelTables);
    const QList<int> outcome = state->SelTablesClicked(rows);
    if (outcome != rows) {
        const QSignalBlocker quiet(form.lstZPGSelTables);
        form.lstZPGSelTables->selectAll();
        form.lstZPGSelTables->item(0)->setSelected(false);
    }
    Show();
}

void ZPBConnection::Private::TimeoutChange(bool isNumber) {
    const QPointer<ZPBConnection> alive(&page);
    const std::shared_ptr<Prompts> asked = prompts;
    if (!isNumber)
        asked->MsgBox(tr("Must be a number greater or equal to 0"), BoxStyle::Critical,
                      QStringLiteral("ZPBConnection Control"));
    if (alive) Show();
}

void ZPBConnection::Private::Connect(const std::function<ConnectionErrors(ConnectionPageState&)>& work) {
    const QPointer<ZPBConnection> alive(&page);
    const std::shared_ptr<ConnectionPageState> run = state;
    if (IsBusy(run->Run())) return;
    const std::shared_ptr<Prompts> asked = prompts;
    ConnectionErrors errors;
    {
        Hourglass pointer;
        pointer.Show(MousePointer::Hourglass);
        errors = work(*run);
    }
    if (alive) Show();
    if (alive && errors.IsEmpty()) SelectChosen();
    if (!errors.IsEmpty())
        asked->MsgBox(errors.Items.join(QStringLiteral("\r\n")), BoxStyle::OkOnly,
                      run->Run().Options.gRunTimeCaption);
}

/// An offer is new also when it reads as the one before: what is chosen already is what is selected in it.
void ZPBConnection::Private::SelectChosen() {
    const QSignalBlocker quiet(form.lstZPGSelTables);
    form.lstZPGSelTables->clearSelection();
    const QList<int> rows = state->ChosenRows();
    for (const int row : rows) form.lstZPGSelTables->item(row)->setSelected(true);
}

void ZPBConnection::Private::Show() {
    showing = true;
    form.fraConnection->setEnabled(selected);
    ShowText(form.txtZPGDataConnection, state->txtZPGDataConnection);
    form.ShowCommandType(state->cmbZPGCommandType);
    form.cmbZPGCommandType->setEnabled(state->CommandTypeEnabled);
    ShowItems(form.lstZPGSelTables, state->lstZPGSelTables);
    form.lstZPGSelTables->setEnabled(state->SelTablesEnabled);
    ShowItems(form.lstZPGSelectedTables, state->lstZPGSelectedTables);
    ShowText(form.txtConnectionTimeout, state->txtConnectionTimeout);
    ShowText(form.txtCommandTimeout, state->txtCommandTimeout);
    showing = false;
    if (std::exchange(marked, state->Changed) != state->Changed) Q_EMIT page.Changed(marked);
}

ZPBConnection::ZPBConnection(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(*this)) {
    setObjectName(QStringLiteral("ZPBConnection"));
    setWindowTitle(tr("Connection"));
    PropertyPage_SelectionChanged({});
}

ZPBConnection::~ZPBConnection() {
    StopWork(d->state->Run());
}

void ZPBConnection::SetPrompts(std::shared_ptr<Prompts> prompts) {
    d->prompts = prompts ? std::move(prompts) : d->DefaultUserPrompts();
}

void ZPBConnection::SetWriter(Writer writer) {
    d->writer = writer ? std::move(writer) : SetProperties;
}

bool ZPBConnection::IsChanged() const {
    return d->state->Changed;
}

void ZPBConnection::PropertyPage_SelectionChanged(const QList<QObject*>& selectedControls) {
    d->SelectionChanged(selectedControls.value(0));
}

void ZPBConnection::PropertyPage_ApplyChanges() {
    d->ApplyChanges();
}

}  // namespace zephrin
