#pragma once

#include "control/ControlProperties.h"

#include <zephrin/PropertyBag.h>

namespace zephrin {

/// Takes every property out of the bag, one after the other. What is missing there, or is no value of the
/// property's type, becomes that of `defaults`. A flag is True for any number but 0.
ControlProperties ReadControlProperties(const PropertyBag& bag, const ControlProperties& defaults);

/// Writes every property, in the same order; a flag as -1 or 0.
void WriteControlProperties(PropertyBag& bag, const ControlProperties& properties);

/// Lets every colour property take a QColor, from code, style sheets and forms alike.
void RegisterColourConversion();

}  // namespace zephrin
