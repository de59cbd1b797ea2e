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
    /// Values are such as every field takes.
    bool PlainValues = false;
};
using Acts = std::vector<Act>;

/// `count` acts from a seed.
Acts RandomActs(unsigned seed, int count, bool plainValues);

/// Does `act` if the form would let the user do it now. Returns what was done, or "" for nothing.
QString Perform(WizardRun& run, const Act& act);

/// What is wrong with the state after an act, or "". With plain values the statement has to be one that the
/// database can read, unless its shape is odd by design.
QString BrokenInvariant(WizardRun& run, bool plainValues);

}  // namespace zephrin::test
