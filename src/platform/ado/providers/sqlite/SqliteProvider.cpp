#include "platform/ado/providers/sqlite/SqliteProvider.h"

#include "platform/ado/providers/sqlite/ConnectionStringReader.h"
#include "platform/ado/providers/sqlite/SqliteSession.h"

namespace zephrin::ado::providers {

bool SqliteProvider::Accepts(const QString& connectionString) const {
    const QString provider =
        sqlite::KeywordValue(sqlite::SplitConnectionString(connectionString), QLatin1StringView("Provider"));
    return provider.compare(QLatin1StringView("SQLite"), Qt::CaseInsensitive) == 0;
}

std::unique_ptr<Session> SqliteProvider::Open(const OpenRequest& request) const {
    return std::make_unique<sqlite::SqliteSession>(sqlite::ReadConnectionString(request.ConnectionString),
                                                   request.ConnectionTimeout, request.Waiting);
}

}  // namespace zephrin::ado::providers
