#pragma once

#include "runstate/ZPGGlobalDeclarations.h"
#include "savedquery/QueryFamily.h"

#include <array>
#include <optional>

namespace zephrin {

/// The one row of a master file.
struct QueryMaster {
    /// Paths of the companions, in their order; empty for those that were not written.
    std::array<QString, CompanionCount> Paths;
    QString ConnectionString, UserId, Password;
    /// Seconds; nothing where the file holds none.
    std::optional<int> ConnectionTimeout, CommandTimeout;
};

/// The connection of the run, as a query file keeps it.
QueryMaster DescribeConnection(ZPGGlobalDeclarations& state);

/// The recordset of a master file. What its column can't hold stays Null and is named in `leftOut`.
ado::RecordsetPtr MasterToRows(const QueryMaster& master, QStringList& leftOut);

/// Nothing for rows that are no master: columns are missing, or there is no row.
std::optional<QueryMaster> RowsToMaster(ado::Recordset& rows);

}  // namespace zephrin
