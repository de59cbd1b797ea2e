#pragma once

#include "platform/ado/providers/files/protocol/Protocol.h"

namespace zephrin::reader {

/// Prints what is in a file, for who wants to know why it doesn't open as it should: tables, their columns,
/// how many rows can be read. Returns the exit code.
int PrintListing(const ado::files::Request& request);

}  // namespace zephrin::reader
