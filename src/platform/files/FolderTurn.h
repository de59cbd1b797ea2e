#pragma once

#include <QString>

namespace zephrin::files {

/// The turn of one of those who change several files of a folder that belong together. Who holds it is alone
/// at that, in this program and in others; the system takes it back from a program that dies.
class FolderTurn {
 public:
    /// Waits for the turn; throws Failure where somebody holds it for longer than a few seconds.
    explicit FolderTurn(const QString& folder);
    ~FolderTurn();
    FolderTurn(const FolderTurn&) = delete;
    FolderTurn& operator=(const FolderTurn&) = delete;

    /// False on a file system without such turns, where others may be at work at the same time.
    bool IsHeld() const { return held; }

 private:
    int handle;
    bool held = false;
};

}  // namespace zephrin::files
