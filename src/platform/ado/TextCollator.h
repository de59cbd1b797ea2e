#pragma once

#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>

namespace zephrin::ado {

/// The root order of Unicode, which no user's settings change, down to accents. Comparing with it is safe on
/// any thread.
const UCollator* TextCollator();

/// Walks through the weights of a text; one for a thread.
UCollationElements* OpenTextElements();

}  // namespace zephrin::ado
