#include "control/Persistence.h"
#include "control/ZephrinPrivate.h"
#include "resources/Icons.h"

#include <zephrin/Zephrin.h>

#include <QDynamicPropertyChangeEvent>
#include <QPainter>

#include <utility>

namespace zephrin {

namespace {

/// The fixed size of the control in twips, of which 1440 make an inch.
constexpr int footprintWidth = 900;
constexpr int footprintHeight = 1110;
constexpr int twipsPerInch = 1440;

constexpr const char* designTimeProperty = "ZPBDesignTime";

QString Lines(std::initializer_list<QString> lines) {
    return QStringList(lines).join(QStringLiteral("\r\n"));
}

}  // namespace

Zephrin::Zephrin(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(*this)) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFixedSize(sizeHint());
    QWidget::setVisible(false);
}

Zephrin::~Zephrin() {
    d->Terminate();
}

void Zephrin::ShowAboutBox() {
    const std::shared_ptr<Prompts> prompts = d->state->UserPrompts;
    prompts->ShowAbout(QStringLiteral("Zephrin"), QString::fromUtf16(ZEPHRIN_VERSION));
}

void Zephrin::ZPBMakeConnection(const QString& connectionString, const QString& userName,
                                const QString& password, int connectTimeout, int commandTimeout,
                                int maxRecords, bool openQuery, const QString& queryName,
                                bool removeSystemTables) {
    const QPointer<Zephrin> alive(this);
    const std::shared_ptr<ZPGGlobalDeclarations> state = d->state;
    if (frmZPG::OpenForm()) {
        Q_EMIT ZPBAlreadyLoaded();
        return;
    }
    if (IsBusy(*state)) return d->TellConnection(BusyError(*state));
    const bool opensQuery = openQuery || !queryName.isEmpty();
    Private::ConnectArguments arguments{connectionString, userName,       password,
                                        connectTimeout,   commandTimeout, removeSystemTables};
    if (!opensQuery && !d->HasConnection(arguments)) {
        d->AskForConnection(arguments);
        if (!alive) return;
        // Behind the prompt the host may have shown a wizard.
        if (frmZPG::OpenForm()) {
            Q_EMIT ZPBAlreadyLoaded();
            return;
        }
    }
    state->gOpenQuery = opensQuery;
    state->gQueryName = queryName;
    state->gMaxRecords = maxRecords;
    std::optional<ConnectionErrors> errors;
    try {
        errors = d->Connect(arguments);
    } catch (const ado::Error& error) {
        const std::shared_ptr<Prompts> prompts = state->UserPrompts;
        prompts->MsgBox(Lines({ResString(*state, 179), error.Description(), error.Source()}),
                        BoxStyle::OkOnly, QStringLiteral("ZPBMakeConnection"));
        return;
    }
    if (!alive) return;
    d->AttachBridge();
    if (!errors) {
        d->connectionFailed = true;
        return;
    }
    d->TellConnection(ado::Error(errors->Number(), errors->Description(), errors->Source()));
}

void Zephrin::ZPBDisconnectConnection() {
    StopWork();
    ado::Connection& connection = d->state->SharedConnection();
    if (connection.State() == ado::ObjectState::Open) connection.Close();
}

void Zephrin::StopWork() {
    zephrin::StopWork(*d->state);
}

void Zephrin::ZPBShowZephrin() {
    if (frmZPG* open = frmZPG::OpenForm()) return d->BringForward(*open);
    if (IsBusy(*d->state)) return;
    const bool failureWasTold = std::exchange(d->connectionFailed, false);
    if (!d->state->OfferedTables.IsEmpty() || d->state->gOpenQuery) {
        d->CopyOptions();
        d->AttachBridge();
        d->ShowForm();
        return;
    }
    if (failureWasTold) return;
    const std::shared_ptr<ZPGGlobalDeclarations> state = d->state;
    const auto text = [&state](int id) { return ResString(*state, id); };
    state->UserPrompts->MsgBox(
        Lines({text(180), {}, text(181), text(182), text(183), text(184), {}, text(185)}), BoxStyle::Critical,
        QStringLiteral("Show Method Error"));
}

void Zephrin::ZPBExcel97ConnectionDetails(const QString& driver, const QString& database,
                                          const QString& server, const QString& dbq, const QString& userId,
                                          const QString& password, bool trustedConnection) {
    d->state->gExcel97 = {driver,
                          database,
                          server,
                          dbq,
                          userId,
                          password,
                          trustedConnection ? QStringLiteral("YES") : QStringLiteral("NO"),
                          true};
}

void Zephrin::SetPrompts(std::shared_ptr<Prompts> prompts) {
    d->state->UserPrompts = prompts ? std::move(prompts) : d->DefaultUserPrompts();
}

void Zephrin::InitProperties() {
    d->properties = d->Defaults();
}

void Zephrin::ReadProperties(const PropertyBag& bag) {
    d->properties = ReadControlProperties(bag, d->Defaults());
    // The options of an open wizard stay what they were when it was shown.
    if (!d->form) d->CopyOptions();
    CreateHostValues(*d->state);
}

void Zephrin::WriteProperties(PropertyBag& bag) const {
    WriteControlProperties(bag, d->properties);
}

QString Zephrin::ZPBActiveConnectionString() const {
    return d->state->SharedConnection().ConnectionString();
}

clsTableCollection Zephrin::ZPBTableCollection() const {
    return clsTableCollection(d->state);
}

void Zephrin::setVisible(bool visible) {
    QWidget::setVisible(visible && property(designTimeProperty).toBool());
}

QSize Zephrin::sizeHint() const {
    return {footprintWidth * logicalDpiX() / twipsPerInch, footprintHeight * logicalDpiY() / twipsPerInch};
}

bool Zephrin::event(QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange &&
        static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName() == designTimeProperty) {
        // Without a parent it would become a window of its own: who puts it somewhere then shows it there.
        const bool designTime = property(designTimeProperty).toBool();
        if (!designTime || !isWindow()) setVisible(designTime);
    }
    return QWidget::event(event);
}

void Zephrin::paintEvent(QPaintEvent*) {
    resources::InitResources();
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    const int side = qMin(width(), height()) * 3 / 4;
    QRect place({}, QSize(side, side));
    place.moveCenter(rect().center());
    QIcon(QStringLiteral(":/zephrin/icons/zephrin.svg")).paint(&painter, place);
}

void Zephrin::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (size() != sizeHint()) setFixedSize(sizeHint());
}

}  // namespace zephrin
