#include "control/ZephrinPrivate.h"

#include "control/OfferedTables.h"
#include "control/Persistence.h"
#include "flow/Shell.h"
#include "platform/ado/providers/AllProviders.h"
#include "platform/dialogs/DefaultPrompts.h"
#include "runstate/clsBridge.h"
#include "savedquery/OpenQuery.h"
#include "wizard/Hourglass.h"
#include "wizard/LiveWork.h"

#include <QApplication>

namespace zephrin {

namespace {

std::shared_ptr<ZPGGlobalDeclarations> MakeState() {
    const ado::ProviderSet providers = ado::providers::AllProviders();
    auto state =
        std::make_shared<ZPGGlobalDeclarations>(providers, std::make_shared<DefaultPrompts>(providers));
    state->OpenSavedQuery = [](ZPGGlobalDeclarations& run) {
        return OpenSavedQuery(run, run.gQueryName) != OpenOutcome::Failed;
    };
    return state;
}

void CloseRecordset(ado::RecordsetPtr& recordset) {
    if (recordset && recordset->IsOpen()) recordset->Close();
    recordset.reset();
}

}  // namespace

Zephrin::Private::Private(Zephrin& owner) : control(owner), state(MakeState()) {
    // The run may outlive the control in the middle of a work.
    const auto surroundings = std::make_shared<LiveWork>();
    const QPointer<Zephrin> alive(&control);
    surroundings->OnProgress = [alive](const WorkProgress& progress) {
        if (alive) Q_EMIT alive->Busy(progress.What, progress.Rows, progress.Seconds);
    };
    surroundings->OnEnded = [alive] {
        if (alive) Q_EMIT alive->BusyEnded();
    };
    state->Surroundings = surroundings;
    RegisterColourConversion();
    properties = Defaults();
}

ControlProperties Zephrin::Private::Defaults() const {
    ControlProperties defaults;
    defaults.ZPBLabelFont = control.font();
    return defaults;
}

std::optional<ConnectionErrors> Zephrin::Private::Connect(const ConnectArguments& arguments) {
    const std::shared_ptr<ZPGGlobalDeclarations> run = state;
    if (run->gOpenQuery || !HasConnection(arguments)) return std::nullopt;
    Hourglass pointer;
    pointer.Show(MousePointer::Hourglass);
    if (!arguments.ConnectionString.isEmpty()) return OpenAndLoad(arguments);
    // The stored connection is used as it was stored: no argument plays a part.
    const ControlProperties stored = properties;
    ConnectionErrors errors = OpenDatabaseConnection(
        *run, stored.ZPBConnectionString, stored.ConnectionTimeout, stored.ZPBCommandTimeout, {}, {});
    if (errors.IsEmpty()) LoadTableString(*run, stored.ZPBTableString);
    return errors;
}

bool Zephrin::Private::HasConnection(const ConnectArguments& arguments) const {
    return !arguments.ConnectionString.isEmpty() || !properties.ZPBConnectionString.isEmpty();
}

void Zephrin::Private::AskForConnection(ConnectArguments& arguments) const {
    const std::shared_ptr<Prompts> prompts = state->UserPrompts;
    arguments.ConnectionString = prompts->PromptNewConnection({});
    arguments.UserName.clear();
    arguments.Password.clear();
}

ConnectionErrors Zephrin::Private::OpenAndLoad(const ConnectArguments& arguments) {
    const auto orProperty = [](int seconds, int property) { return seconds == Omitted ? property : seconds; };
    const std::shared_ptr<ZPGGlobalDeclarations> run = state;
    ConnectionErrors errors = OpenDatabaseConnection(
        *run, arguments.ConnectionString, orProperty(arguments.ConnectTimeout, properties.ConnectionTimeout),
        orProperty(arguments.CommandTimeout, properties.ZPBCommandTimeout), arguments.UserName,
        arguments.Password);
    if (errors.IsEmpty()) LoadSchemaTables(*run, arguments.RemoveSystemTables);
    return errors;
}

std::shared_ptr<Prompts> Zephrin::Private::DefaultUserPrompts() const {
    return std::make_shared<DefaultPrompts>(state->Providers);
}

void Zephrin::Private::TellConnection(const ado::Error& outcome) {
    int number = outcome.Number();
    QString description = outcome.Description(), source = outcome.Source();
    Q_EMIT control.ConnectionComplete(number, description, source);
}

void Zephrin::Private::AttachBridge() {
    if (bridgeAttached) return;
    bridgeAttached = true;
    clsBridge* bridge = &state->Bridge();
    connect(bridge, &clsBridge::QueryComplete, &control,
            [this](int& number, QString& error, QString& sql, ado::RecordsetPtr& results, ado::RecordsetPtr&,
                   ado::RecordsetPtr&) { Q_EMIT control.QueryExecuted(number, error, sql, results); });
    connect(bridge, &clsBridge::SaveQuery, &control, &Zephrin::QuerySaved);
    connect(bridge, &clsBridge::DeleteQuery, &control, &Zephrin::QueryDeleted);
    connect(bridge, &clsBridge::ZPBClosed, &control, &Zephrin::ZPBUnloaded);
    connect(bridge, &clsBridge::UserViewCreated, &control, &Zephrin::UserCreatedView);
    connect(bridge, &clsBridge::ExportToExcel, &control, &Zephrin::ExportToExcel);
}

void Zephrin::Private::CopyOptions() {
    RunOptions& options = state->Options;
    options.gDateFormat = properties.ZPBDateFormat;
    options.gAllowCreateView = properties.ZPBAllowCreateView;
    options.gLabelBackColor = properties.ZPBLabelBackColor;
    options.gLabelForeColor = properties.ZPBLabelForeColor;
    options.gAllowSQLReset = properties.ZPBAllowSQLReset;
    options.gAllowAndOrOverride = properties.ZPBAllowAndOrOverride;
    options.gAllowTableSelection = properties.ZPBAllowTableSelection;
    options.gAllowJoinCreation = properties.ZPBAllowJoinCreation;
    options.gAllowFieldSelection = properties.ZPBAllowFieldSelection;
    options.gAllowSaveDelete = properties.ZPBAllowSaveDeleteQuery;
    options.gAllowShowResults = properties.ZPBShowQueryResults;
    options.gAllowValueSearch = properties.ZPBAllowValueSearch;
    options.gAllowCreateRecordset = properties.ZPBCreateQueryRecordset;
    options.gAllowExcelExport = properties.ZPBAllowExcelExport;
    options.gAllowGroupBy = properties.ZPBAllowGroupByOption;
    options.gAllowOrderBy = properties.ZPBAllowOrderByOption;
    options.gAllowCalcFields = properties.ZPBAllowCalcFieldOption;
    options.gDisableDefaultExcelExport = properties.ZPBDisableDefaultExportToExcel;
    options.gModalForm = properties.ZPBModalForm;
    options.gRunTimeCaption = properties.ZPBRunTimeControlCaption;
}

/// A modal window of the host's shuts out all that doesn't belong to it, so it comes first, wherever the
/// control is.
QWidget* Zephrin::Private::Owner() const {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return control.isWindow() ? QApplication::activeWindow() : control.window();
}

void Zephrin::Private::BringForward(frmZPG& open) const {
    if (form == &open) open.BelongTo(Owner());
    open.BringForward();
}

void Zephrin::Private::ShowForm() {
    const QPointer<Zephrin> alive(&control);
    const bool modal = state->Options.gModalForm;
    const QPointer<frmZPG> shown =
        new frmZPG(state, properties.ZPBRunTimeControlIcon, properties.ZPBLabelFont);
    form = shown;
    // An unload or a load puts the number up: until Load has returned, the showing is the next one.
    openShowing = state->Showing + 1;
    connect(shown, &frmZPG::Unloaded, &control,
            [this](const QString& loadError) { FormUnloaded(loadError); });
    connect(shown, &QObject::destroyed, &control, [this] { FormDestroyed(); });
    if (!shown->Load() || !alive || !shown) return;
    shown->BelongTo(Owner());
    if (modal) {
        shown->ShowModal();
    } else {
        shown->show();
    }
}

void Zephrin::Private::FormUnloaded(const QString& loadError) {
    const std::shared_ptr<ZPGGlobalDeclarations> run = state;
    openShowing.reset();
    if (frmZPG* gone = form) {
        form.clear();
        gone->disconnect(&control);
        gone->DeleteWhenIdle();
    }
    // Last: the host may show the wizard again, or end the control.
    run->Bridge().CloseZPB(loadError);
}

void Zephrin::Private::FormDestroyed() {
    form.clear();
    if (!openShowing) return;
    const std::shared_ptr<ZPGGlobalDeclarations> run = state;
    const QString loadError = run->Showing == *openShowing ? UnloadForm(*run) : QString();
    openShowing.reset();
    run->Bridge().CloseZPB(loadError);
}

void Zephrin::Private::Terminate() {
    zephrin::StopWork(*state);
    if (state->oBridge) state->oBridge->disconnect(&control);
    if (state->adoConnection && state->adoConnection->State() == ado::ObjectState::Open)
        state->adoConnection->Close();
    CloseRecordset(state->rsSchemaTables);
    CloseRecordset(state->rsHostValues);
    state->OfferedTables.Clear();
    openShowing.reset();
    if (frmZPG* open = form) {
        form.clear();
        open->disconnect(&control);
        state->gClosingSilently = true;
        open->UnloadSilently();
        open->DeleteWhenIdle();
    }
}

void Zephrin::Private::SetWithDependent(bool& flag, const QString& name, bool value, bool& dependent,
                                        const QString& dependentName) {
    const QPointer<Zephrin> alive(&control);
    flag = value;
    Q_EMIT control.PropertyChanged(name);
    if (!alive || value) return;
    dependent = false;
    Q_EMIT control.PropertyChanged(dependentName);
}

}  // namespace zephrin
