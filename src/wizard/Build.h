#pragma once

#include <QString>

class QGroupBox;
class QLabel;
class QPushButton;
class QWidget;

namespace zephrin {

// How the pages make their controls: the object name is the design's, the caption comes later from the string
// resource whose number stands in Tag.

QLabel* MakeLabel(const QString& name, int tag, QWidget* buddy = nullptr);
QGroupBox* MakeFrame(const QString& name, int tag);
QPushButton* MakeButton(const QString& name, int tag, const QString& icon = {});
/// A button with a drawing and no caption; `accessibleName` says what it does, and is its tool tip too.
QPushButton* MakeIconButton(const QString& name, const QString& icon, const QString& accessibleName);

}  // namespace zephrin
