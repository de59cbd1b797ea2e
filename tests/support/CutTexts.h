#pragma once

#include <QStringList>

class QWidget;

namespace zephrin::test {

/// The captions of the visible controls of `window` that its present size cuts, a line each: labels, buttons,
/// boxes, frames, heads of tabs, items of drop-downs, placeholders. What shortens its text on purpose has to
/// have a tool tip with all of it.
QStringList CutTexts(const QWidget& window);

/// Makes the captions of `window` half as long again, as a translation may.
void StretchCaptions(QWidget& window);

}  // namespace zephrin::test
