#include "resources/StringTable.h"

#include "resources/StringTexts.h"

#include <algorithm>

namespace zephrin::resources {

QString LoadResString(int id) {
    const int set = (id - FirstStringId) / StringSetDistance;
    const int base = id - set * StringSetDistance;
    if (id < FirstStringId || set > 3 || base > LastStringId) return {};

    const auto rows = StringRows();
    const auto row = std::ranges::lower_bound(rows, base, {}, &StringRow::Id);
    if (row == rows.end() || row->Id != base) return {};
    const char16_t* own = row->Texts[static_cast<size_t>(set)];
    return QString::fromUtf16(own ? own : row->Texts[0]);
}

}  // namespace zephrin::resources
