#pragma once

#include "platform/ado/Provider.h"

namespace zephrin::ado::providers {

/// The embedded engine: `Provider=SQLite;Dialect=SQL Server;Data Source=FILE`, with `Dialect=MS Access` or
/// `Dialect=Microsoft Excel Driver` for the others, and `Mode=Read` for a file that must not be written.
///
/// Statements are taken in the dialect of the string and written anew for SQLite.
class SqliteProvider final : public Provider {
 public:
    bool Accepts(const QString& connectionString) const override;
    std::unique_ptr<Session> Open(const OpenRequest& request) const override;
};

}  // namespace zephrin::ado::providers
