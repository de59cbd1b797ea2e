#pragma once

#include "runstate/FormState.h"

#include <QRadioButton>

class QAbstractButton;
class QCheckBox;
class QLabel;
class QLineEdit;
class QWidget;

namespace zephrin {

class ComboBox;
class ListBox;

namespace controls {
class ColouredText;
class DataGrid;
}  // namespace controls

// Each of these makes one widget agree with its state. They change only what differs, so that they may be
// called after every act of the user without flicker and without moving a caret.

void ShowControl(QWidget* widget, const ControlState& state);
void ShowText(QLineEdit* box, const TextState& state);
void ShowCheck(QCheckBox* box, const CheckState& state);
void ShowLabel(QLabel* label, const LabelState& state);
void ShowList(ListBox* list, ListBoxState& state);
void ShowCombo(ComboBox* combo, ComboState& state);
void ShowColouredText(controls::ColouredText* box, const RichTextState& state);
void ShowGrid(controls::DataGrid* grid, const GridState& state);

template <int N>
void ShowOptions(const std::array<QRadioButton*, N>& buttons, const OptionState<N>& state) {
    for (int i = 0; i < N; ++i) {
        ShowControl(buttons[i], state.Options[i]);
        if (i == state.Selected) buttons[i]->setChecked(true);
    }
}

/// The tool tip that a control has while its state gives none.
void SetDesignToolTip(QWidget* widget, const QString& text);

/// `text` as a tool tip that shows exactly these characters, also where they look like mark-up.
QString PlainToolTip(const QString& text);

}  // namespace zephrin
