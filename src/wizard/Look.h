#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <QColor>
#include <QFont>

class QPalette;
class QWidget;

namespace zephrin {

/// Gives the labels and check boxes of `form` the colours and the font of the run, and its command buttons
/// the font. Two labels and one check box keep the look of the toolkit. Call it again when the palette
/// changes.
void ApplyLook(QWidget* form, const RunOptions& options, const QFont& font);

/// Gives each label, frame and command button whose Tag names a string resource from 101 to `lastId` that
/// text.
void ApplyCaptions(QWidget* form, const ZPGGlobalDeclarations& state, int lastId = 234);

/// Shows `text` exactly, on a label, a frame or a button: "&" is doubled where the toolkit would take it for
/// a mnemonic.
void SetCaption(QWidget* widget, const QString& text);
void SetForeColour(QWidget* widget, const QColor& colour);

/// Twips (1/1440 inch) in the pixels of a display at 100 %.
constexpr int TwipsToPixels(int twips) {
    return twips / 15;
}

}  // namespace zephrin
