#pragma once

#include <QString>

namespace zephrin::controls {

/// `text` for a place that is mirrored: marked so that it is laid out by itself, in the direction of its
/// first letter. Without the marks a line that runs from right to left swaps table and field, turns "<" into
/// ">", and puts the sign behind a number. For display only.
inline QString Isolated(const QString& text) {
    constexpr QChar firstStrongIsolate(0x2068), popIsolate(0x2069);
    return text.isEmpty() ? text : firstStrongIsolate + text + popIsolate;
}

}  // namespace zephrin::controls
