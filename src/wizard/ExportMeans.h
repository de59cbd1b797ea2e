#pragma once

#include "output/ExcelExport.h"

#include <memory>

namespace zephrin {

/// What the form gives an export: a workbook file in the folder of the user's (or the host's) choice that is
/// opened when it is whole.
ExportMeans MakeExportMeans(ZPGGlobalDeclarations& state);

}  // namespace zephrin
