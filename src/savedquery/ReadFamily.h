#pragma once

#include "savedquery/QueryMaster.h"

#include <QStringList>

#include <functional>

namespace zephrin {

/// What the files of a query hold.
struct SavedFamily {
    QueryMaster Master;
    /// Of each companion, in their order; null where the master names none, and for those below.
    std::array<ado::RecordsetPtr, CompanionCount> Rows;
    /// Names of companions that the master has and that are missing or damaged.
    QStringList Lost;
    /// Names of companions that another save wrote than the master's.
    QStringList Foreign;
};

/// Reads the query whose master is `path`; nothing where that is missing, damaged or no master. While
/// somebody saves it, waits a moment and reads again; where a save came to no end, what the master belongs to
/// is found all the same (ReplaceFamily). `goOn` is told how many of the files are read, and throws where
/// that has to end.
std::optional<SavedFamily> ReadFamily(const QString& path, const std::function<void(size_t)>& goOn = {});

}  // namespace zephrin
