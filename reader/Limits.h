#pragma once

namespace zephrin::reader {

/// Gives up whatever the reading of a file doesn't need: memory and processor time beyond a bound, the
/// writing of files, new rights, a life longer than that of the program that started it. Before the file is
/// looked at.
void GiveUpRights(bool serves);

}  // namespace zephrin::reader
