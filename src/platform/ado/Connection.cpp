#include "platform/ado/Connection.h"

#include "platform/ado/ColumnStore.h"
#include "platform/ado/ConnectionText.h"
#include "platform/ado/RecordsetPrivate.h"

#include <algorithm>

namespace zephrin::ado {

namespace {

/// A provider's cursor that keeps its session alive and ends at the limit, also where the provider doesn't.
class SessionCursor : public Cursor {
 public:
    SessionCursor(std::shared_ptr<Session> owner, std::unique_ptr<Cursor> rows, qint64 maxRecords)
        : session(std::move(owner)), inner(std::move(rows)), left(maxRecords), limited(maxRecords > 0) {}

    const QList<Field>& Fields() const override { return inner->Fields(); }
    qint64 Fetch(ColumnStore& into, qint64 maxRows) override {
        const qint64 wanted = limited ? std::min(left, maxRows) : maxRows;
        if (wanted <= 0) return 0;
        const qint64 taken = inner->Fetch(into, wanted);
        left -= taken;
        return taken;
    }

 private:
    // In this order: the cursor goes before the session that it reads from.
    std::shared_ptr<Session> session;
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

void RequireSeconds(int seconds) {
    if (seconds < 0)
        throw Error(ErrorNumber::InvalidArgument,
                    QStringLiteral("A time-out is a number of seconds from 0 upwards."));
}

}  // namespace

Connection::Connection(ProviderSet providerSet) : providers(std::move(providerSet)) {}
Connection::~Connection() = default;

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
    if (session) throw IsOpenAlready();
    if (!connectionString.isEmpty()) request.ConnectionString = connectionString;
    RequireReadable(request.ConnectionString);
    const auto provider = std::find_if(providers.begin(), providers.end(), [this](const auto& candidate) {
        return candidate->Accepts(request.ConnectionString);
    });
    if (provider == providers.end()) throw NoProvider(request.ConnectionString);
    // Not kept: only who opens holds the password.
    OpenRequest opening = request;
    opening.UserId = userId;
    opening.Password = password;
    try {
        session = (*provider)->Open(opening);
    } catch (const Error& error) {
        Error shown(error.Number(), WithoutPasswords(error.Description(), request.ConnectionString, password),
                    error.Source());
        shown.SetPosition(error.Position());
        throw shown;
    }
}

void Connection::Close() {
    if (!session)
        throw Error(ErrorNumber::ObjectClosed,
                    QStringLiteral("Operation is not allowed when the object is closed."));
    session.reset();
}

const std::shared_ptr<Session>& Connection::Live() {
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
    const auto rows = schema == Schema::Tables ? owner->Tables() : owner->Columns(table);
    return RecordsetPrivate::RecordsetOf(*rows);
}

std::unique_ptr<Cursor> Connection::Stream(const QString& statement, qint64 maxRecords) {
    const auto owner = Live();
    ExecuteOptions options;
    options.CommandTimeout = request.CommandTimeout;
    options.MaxRecords = std::max<qint64>(maxRecords, 0);
    return std::make_unique<SessionCursor>(owner, owner->Execute(statement, options), options.MaxRecords);
}

}  // namespace zephrin::ado
