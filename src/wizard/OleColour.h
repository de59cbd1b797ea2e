#pragma once

#include <QColor>
#include <QPalette>

#include <algorithm>
#include <array>
#include <utility>

// OLE colours: 0x00BBGGRR, or with the top bit set the index of a system colour in the low byte. All of it is
// inline, because the plugin of the form editor reads colours as the wizard does and links the library alone.

namespace zephrin {

constexpr quint32 systemColourBit = 0x80000000U;

constexpr bool IsSystemColour(quint32 colour) {
    return (colour & systemColourBit) != 0;
}

/// The role that the toolkit's palette has for a system colour; the text of windows where it has none.
inline QPalette::ColorRole SystemColourRole(quint32 index) {
    static constexpr std::array<std::pair<quint32, QPalette::ColorRole>, 18> roles{{
        {1, QPalette::Window},
        {4, QPalette::Button},
        {5, QPalette::Base},
        {6, QPalette::Dark},
        {7, QPalette::ButtonText},
        {8, QPalette::Text},
        {12, QPalette::Mid},
        {13, QPalette::Highlight},
        {14, QPalette::HighlightedText},
        {15, QPalette::Button},
        {16, QPalette::Dark},
        {17, QPalette::PlaceholderText},
        {18, QPalette::ButtonText},
        {20, QPalette::Light},
        {21, QPalette::Shadow},
        {22, QPalette::Midlight},
        {23, QPalette::ToolTipText},
        {24, QPalette::ToolTipBase},
    }};
    const auto* found =
        std::find_if(roles.begin(), roles.end(), [index](const auto& entry) { return entry.first == index; });
    return found == roles.end() ? QPalette::WindowText : found->second;
}

/// The colour to paint with: an RGB colour as it stands, a system colour by its role in `palette`.
inline QColor OleColour(quint32 colour, const QPalette& palette) {
    if (IsSystemColour(colour)) return palette.color(QPalette::Active, SystemColourRole(colour & 0xFFU));
    return QColor::fromRgb(static_cast<int>(colour & 0xFFU), static_cast<int>((colour >> 8) & 0xFFU),
                           static_cast<int>((colour >> 16) & 0xFFU));
}

/// The OLE colour of a plain one; how far that shows through is lost.
inline quint32 ToOleColour(const QColor& colour) {
    return static_cast<quint32>(colour.red() | (colour.green() << 8) | (colour.blue() << 16));
}

}  // namespace zephrin
