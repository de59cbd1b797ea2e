#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/files/protocol/Protocol.h"
#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <optional>

namespace zephrin::ado::files {

/// The file that a connection string names, and how it is to be read.
struct FileTarget {
    QString Path;
    FileKind Kind = FileKind::Database;
    providers::sqlite::Dialect Speaks = providers::sqlite::Dialect::Access;
    bool HasHeads = true;
    bool MixedAsText = false;
    /// Look at every cell for the width of a sheet: one that says less of itself than it has was met.
    bool MeasureSheets = false;
    /// Where rows are kept while they are worked with; empty for the usual place.
    QString CacheFolder;

    bool operator==(const FileTarget&) const = default;
};

/// The driver that the string names, or whose place it takes ("Microsoft Access Driver", "Microsoft Excel
/// Driver"); empty for a string that is not for a file of these kinds.
struct NamedDriver {
    QString Name;
    bool IsWhole = false;  ///< the string names exactly this driver, and no other will do
};
NamedDriver DriverOf(const QString& connectionString);

/// Reads a string that DriverOf() knows; throws ado::Error for one that asks for what can't be done.
FileTarget ReadFileString(const OpenRequest& request);

}  // namespace zephrin::ado::files
