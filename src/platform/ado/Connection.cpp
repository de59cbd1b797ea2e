#include "platform/ado/Connection.h"

#include "platform/ado/ColumnStore.h"
#include "platform/ado/ConnectionText.h"
#include "platform/ado/RecordsetPrivate.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace zephrin::ado {

namespace {

/// A provider's cursor that keeps its session alive, and that ends at the limit and asks the watcher, also
/// where the provider doesn't.
class SessionCursor : public Cursor {
 public:
    SessionCursor(std::shared_ptr<Session> owner, std::shared_ptr<Watch> waiting,
                  std::unique_ptr<Cursor> rows, qint64 maxRecords)
        : session(std::move(owner)),
          watch(std::move(waiting)),
          inner(std::move(rows)),
          left(maxRecords),
          limited(maxRecords > 0) {}

    const QList<Field>& Fields() const override { return inner->Fields(); }
    qint64 Fetch(ColumnStore& into, qint64 maxRows) override {
        const qint64 wanted = limited ? std::min(left, maxRows) : maxRows;
        if (wanted <= 0) return 0;
        const Watch::Call call(*watch, Watch::Call::Kind::GoesOn);
        const qint64 taken = inner->Fetch(into, wanted);
        left -= taken;
        watch->CountRows(taken);
        if (!watch->GoOn()) throw Cancelled();
        return taken;
    }

 private:
    // In this order: the cursor goes before the session that it reads from.
    std::shared_ptr<Session> session;
    std::shared_ptr<Watch> watch;
    std::unique_ptr<Cursor> inner;
    qint64 left;
    bool limited;
};

Error NotUsable() {
    return Error(
        ErrorNumber::InvalidConnection,
        QStringLiteral("The connection cannot be used to perform this operation. It is either closed or "
                       "invalid in this context."));
}

Error IsOpenAlready() {
    return Error(ErrorNumber::ObjectOpen,
                 QStringLiteral("Operation is not allowed when the object is open."));
}

Error NoProvider(const QString& connectionString) {
    QString name = ConnectionValue(connectionString, u"Provider");
    if (name.isEmpty()) name = ConnectionValue(connectionString, u"Driver");
    if (name.isEmpty())
        return Error(
            ErrorNumber::ProviderNotFound,
            QStringLiteral("Provider cannot be found. The connection string names none that is installed."));
    return Error(
        ErrorNumber::ProviderNotFound,
        QStringLiteral("Provider '%1' cannot be found. It may not be properly installed.").arg(name));
}

void RequireReadable(const QString& connectionString) {
    if (connectionString.size() <= MostConnectionCharacters) return;
    throw Error(ErrorNumber::InvalidArgument,
                QStringLiteral("The connection string is too long: %1 characters, %2 at most.")
                    .arg(connectionString.size())
                    .arg(MostConnectionCharacters));
}

qint64 MachineMemory() {
    const qint64 pages = sysconf(_SC_PHYS_PAGES), bytes = sysconf(_SC_PAGESIZE);
    return pages > 0 && bytes > 0 ? pages * bytes : 0;
}

void RequireSeconds(int seconds) {
    if (seconds < 0)
        throw Error(ErrorNumber::InvalidArgument,
                    QStringLiteral("A time-out is a number of seconds from 0 upwards."));
}

}  // namespace

Connection::Connection(ProviderSet providerSet)
    : providers(std::move(providerSet)), memoryLimit(MachineMemory() / 4) {}

Connection::~Connection() {
    // What it waits in goes on without it, and ends there.
    if (request.Waiting->IsWaiting()) request.Waiting->Stop();
}

void Connection::SetConnectionString(const QString& connectionString) {
    if (session) throw IsOpenAlready();
    request.ConnectionString = connectionString;
}

void Connection::SetConnectionTimeout(int seconds) {
    if (session) throw IsOpenAlready();
    RequireSeconds(seconds);
    request.ConnectionTimeout = seconds;
}

void Connection::SetCommandTimeout(int seconds) {
    RequireSeconds(seconds);
    request.CommandTimeout = seconds;
}

void Connection::Open(const QString& connectionString, const QString& userId, const QString& password, int) {
    const std::shared_ptr<Watch> watch = request.Waiting;
    const Watch::Call call(*watch, Watch::Call::Kind::Begins);
    if (session) throw IsOpenAlready();
    if (!connectionString.isEmpty()) request.ConnectionString = connectionString;
    RequireReadable(request.ConnectionString);
    const auto found = std::find_if(providers.begin(), providers.end(), [this](const auto& candidate) {
        return candidate->Accepts(request.ConnectionString);
    });
    if (found == providers.end()) throw NoProvider(request.ConnectionString);
    const std::shared_ptr<const Provider> provider = *found;
    // Not kept: only who opens holds the password.
    OpenRequest opening = request;
    opening.UserId = userId;
    opening.Password = password;
    try {
        std::shared_ptr<Session> opened = provider->Open(opening);
        // This object may be gone by now.
        if (watch->WasStopped()) throw Cancelled();
        session = std::move(opened);
    } catch (const Error& error) {
        Error shown(error.Number(), WithoutPasswords(error.Description(), opening.ConnectionString, password),
                    error.Source());
        shown.SetPosition(error.Position());
        throw shown;
    }
}

void Connection::Close() {
    const bool waits = request.Waiting->IsWaiting();
    if (waits) request.Waiting->Stop();
    if (!session && !waits)
        throw Error(ErrorNumber::ObjectClosed,
                    QStringLiteral("Operation is not allowed when the object is closed."));
    session.reset();
}

const std::shared_ptr<Session>& Connection::Live() {
    request.Waiting->RequireIdle();
    // A connection that was lost stays so until it is closed and opened anew.
    if (!session || !session->IsAlive()) throw NotUsable();
    return session;
}

RecordsetPtr Connection::Execute(const QString& statement) {
    auto rows = std::make_shared<Recordset>();
    rows->Open(statement, *this);
    return rows;
}

RecordsetPtr Connection::OpenSchema(Schema schema, const QString& table) {
    const auto owner = Live();
    const std::shared_ptr<Watch> watch = request.Waiting;
    const qint64 limit = memoryLimit;
    std::unique_ptr<Cursor> rows;
    {
        const Watch::Call call(*watch, Watch::Call::Kind::Begins);
        rows = schema == Schema::Tables ? owner->Tables() : owner->Columns(table);
    }
    return RecordsetPrivate::RecordsetOf(*std::make_unique<SessionCursor>(owner, watch, std::move(rows), 0),
                                         limit);
}

std::unique_ptr<Cursor> Connection::Stream(const QString& statement, qint64 maxRecords) {
    const auto owner = Live();
    ExecuteOptions options;
    options.CommandTimeout = request.CommandTimeout;
    options.MaxRecords = std::max<qint64>(maxRecords, 0);
    const std::shared_ptr<Watch> watch = request.Waiting;
    const Watch::Call call(*watch, Watch::Call::Kind::Begins);
    return std::make_unique<SessionCursor>(owner, watch, owner->Execute(statement, options),
                                           options.MaxRecords);
}

}  // namespace zephrin::ado
