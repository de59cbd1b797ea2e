#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/odbc/Channel.h"

namespace zephrin::ado::odbc {

/// The tables of the connected database, as Session::Tables says them.
std::unique_ptr<Cursor> ReadTables(Channel& channel, int timeout);
/// The columns of one table, as Session::Columns says them.
std::unique_ptr<Cursor> ReadColumns(Channel& channel, const QString& table, int timeout);

/// One of the words by which the query builder knows kinds of tables, for a driver's own: "TABLE", "VIEW",
/// "SYSTEM TABLE", "SYSTEM VIEW", or the driver's word in capitals.
QString NormalTableType(const QString& driversWord, const QString& schema);

/// A name as a pattern that meets this name, and few others.
QString EscapedPattern(const QString& name, const QString& escape);

}  // namespace zephrin::ado::odbc
