#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

enum class OpenOutcome {
    Opened,
    Cancelled,  ///< no file was chosen; nothing changed
    Failed,     ///< the master is missing or no master; the user was told
};

/// Opens the query whose master is `path`, or asks for one where that is empty: its connection replaces the
/// present one, its recordsets and lists the present ones. A companion that can't be read is passed over
/// and named in the status bar. When it fails gLoadError is set, and the wizard must close.
OpenOutcome OpenSavedQuery(ZPGGlobalDeclarations& state, const QString& path);

/// The open button: asks whether to save what was changed, then for a file, and opens that on a fresh start.
/// Until the file was found to be a query, nothing is touched.
OpenOutcome OpenFromButton(ZPGGlobalDeclarations& state);

}  // namespace zephrin
