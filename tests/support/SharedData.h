#pragma once

#include <QString>

namespace zephrin::test {

/// A folder of real files that is handed around beside the source and not within it: `name` in
/// `../shared/data`, or in the folder that ZEPHRIN_SHARED_DATA names. Ends in a slash; empty where there is
/// none.
QString SharedFolder(const QString& name);

/// Why a test is skipped that needs such files. Unlike a program that is missing, they may be missing
/// everywhere.
inline constexpr const char* NoSharedFiles = "its files are not beside the source";

}  // namespace zephrin::test
