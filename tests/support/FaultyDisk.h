#pragma once

#include <QString>

#include <cerrno>
#include <functional>

namespace zephrin::test {

/// A disk with a fault. While one of these lives, a step of the system's on a file below `folder` goes wrong:
/// opening, writing, closing, synchronising, renaming, linking or removing one. Steps count from 0. It stands
/// in front of the C functions, so that it hits libraries too; they find it in every program that links this.
class FaultyDisk {
 public:
    enum class Fault {
        Once,        ///< that step answers `error`; a write writes half before
        FromThenOn,  ///< so do all that follow
        Kill         ///< the program ends there as if it were killed
    };
    FaultyDisk(const QString& folder, int step, int error = EIO, Fault fault = Fault::Once);
    ~FaultyDisk();
    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;

    /// Whether that step was come to.
    bool Happened() const;
};

/// Runs `act` in a process of its own; whether that is killed.
bool IsKilledIn(const std::function<void()>& act);

}  // namespace zephrin::test
