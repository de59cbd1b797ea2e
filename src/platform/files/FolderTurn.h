#pragma once

#include <QString>

namespace zephrin::files {

/// The turn of one of those who change several files of a folder that belong together. Who holds it is alone
/// at that, in this program and in others; the system takes it back from a program that dies.
class FolderTurn {
 public:
    enum class IfTaken {
        Wait,   ///< throws Failure where somebody holds it for longer than a few seconds
        GiveUp  ///< is not held then
    };
    explicit FolderTurn(const QString& folder, IfTaken ifTaken = IfTaken::Wait);
    ~FolderTurn();
    FolderTurn(const FolderTurn&) = delete;
    FolderTurn& operator=(const FolderTurn&) = delete;

    /// False also on a file system without such turns, where others may be at work at the same time.
    bool IsHeld() const { return held; }

 private:
    int handle;
    bool held = false;
};

}  // namespace zephrin::files
