#pragma once

namespace zephrin::reader {

/// Reads one request from standard input, answers it on standard output, and returns the exit code.
int Serve();

}  // namespace zephrin::reader
