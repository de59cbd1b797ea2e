#pragma once

#include <QString>

namespace zephrin::bench {

inline constexpr int ResultColumns = 8;

/// Makes a database of one table, Sales, with eight columns: two integers, a real, four texts of usual
/// lengths and a date that is kept as text. The same rows every time.
void MakeSales(const QString& path, int rows);

}  // namespace zephrin::bench
