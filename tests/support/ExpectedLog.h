#pragma once

#include <QString>

namespace zephrin::test {

/// Announces a warning that the test in hand will log: one that contains `part` does not fail it.
void ExpectLog(const QString& part);

}  // namespace zephrin::test
