#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

enum class OpenOutcome {
    Opened,
    Cancelled,  ///< no file was chosen; nothing changed
    Failed,     ///< the master is missing or no master: the user was told, gLoadError is set, and the wizard
                ///< must close
};

/// Opens the query whose master is `path`, or asks for one where that is empty: its connection replaces the
/// present one, its recordsets and lists the present ones. A companion that can't be read is passed over
/// and named in the status bar.
OpenOutcome OpenSavedQuery(ZPGGlobalDeclarations& state, const QString& path);

/// The open button: asks for a file, opens it, and enables what form load enables behind a query.
OpenOutcome OpenFromButton(ZPGGlobalDeclarations& state);

}  // namespace zephrin
