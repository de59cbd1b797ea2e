#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/odbc/Channel.h"
#include "platform/ado/providers/odbc/KeywordTranslation.h"

namespace zephrin::ado::odbc {

/// A connection through an ODBC driver.
class OdbcSession final : public Session {
 public:
    /// Connects, for no longer than the request's time-out; throws ado::Error.
    OdbcSession(const Target& target, const OpenRequest& request);

    std::unique_ptr<Cursor> Execute(const QString& statement, const ExecuteOptions& options) override;
    std::unique_ptr<Cursor> Tables() override;
    std::unique_ptr<Cursor> Columns(const QString& table) override;
    bool IsAlive() const override { return channel->IsAlive(); }

 private:
    /// Shared with the cursors, which may be destroyed after the session.
    std::shared_ptr<Channel> channel;
    const int schemaTimeout;
};

}  // namespace zephrin::ado::odbc
