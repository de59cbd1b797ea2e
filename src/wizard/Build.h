#pragma once

#include <QList>
#include <QString>

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QWidget;

namespace zephrin {

// How the pages make their controls: the object name is the design's, the caption comes later from the string
// resource whose number stands in Tag.

QLabel* MakeLabel(const QString& name, int tag, QWidget* buddy = nullptr);
/// Makes a label of another kind one of the form's.
void NameLabel(QLabel* label, const QString& name, int tag, QWidget* buddy = nullptr);
QGroupBox* MakeFrame(const QString& name, int tag);
QPushButton* MakeButton(const QString& name, int tag, const QString& icon = {});
/// A button with a drawing and no caption; `accessibleName` says what it does, and is its tool tip too.
QPushButton* MakeIconButton(const QString& name, const QString& icon, const QString& accessibleName);

/// Makes option buttons of one choice a single stop of the Tab key, on the one that is chosen.
void MakeOneStop(const QList<QRadioButton*>& options);

}  // namespace zephrin
