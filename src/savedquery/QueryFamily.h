#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QString>

#include <array>

namespace zephrin {

/// A working recordset that is saved in a file of its own, beside the master.
struct Companion {
    /// Name of the master's column that holds the path.
    const char16_t* Column;
    /// The file is called like the query without its suffix, and this.
    const char16_t* FileName;
    /// The recordset; null for the values of the lists, which are made for the file.
    ado::RecordsetPtr ZPGGlobalDeclarations::*Rows;
    /// Written also without rows.
    bool Always;
};

inline constexpr size_t CompanionCount = 9;
/// In the order in which they are written.
const std::array<Companion, CompanionCount>& Companions();

/// The chosen path without its last four characters, which are taken to be the suffix; empty where the name
/// has no more than these.
QString QueryBase(const QString& path);

/// Path of the master of a query, and of a companion.
QString MasterPath(const QString& base);
QString CompanionPath(const QString& base, const Companion& companion);

/// Pattern of the file dialogs.
QString QueryFilter();

}  // namespace zephrin
