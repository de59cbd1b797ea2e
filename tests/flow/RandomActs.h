#pragma once

#include "support/WizardRun.h"

#include <vector>

namespace zephrin::test {

/// Something a user does: which of the acts, and numbers that choose among what it offers at that moment. The
/// same numbers always do the same, so that a sequence can be run again and cut down.
struct Act {
    int Kind = 0;
    int First = 0;
    int Second = 0;
};
using Acts = std::vector<Act>;

/// `count` acts from a seed.
Acts RandomActs(unsigned seed, int count);

/// Does `act` if the form would let the user do it now. Returns what was done, or "" for nothing.
QString Perform(WizardRun& run, const Act& act);

/// What is wrong with the state after an act, or "".
QString BrokenInvariant(const WizardRun& run);

}  // namespace zephrin::test
