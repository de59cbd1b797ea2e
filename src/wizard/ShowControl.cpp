#include "wizard/ShowControl.h"

#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "wizard/ComboBox.h"
#include "wizard/ListBox.h"
#include "wizard/Look.h"
#include "wizard/OleColour.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTextDocument>

namespace zephrin {

namespace {

constexpr char designToolTip[] = "designToolTip";

void ShowToolTip(QWidget* widget, const QString& text) {
    const QString shown = PlainToolTip(text.isEmpty() ? widget->property(designToolTip).toString() : text);
    if (widget->toolTip() != shown) widget->setToolTip(shown);
}

}  // namespace

QString PlainToolTip(const QString& text) {
    if (!Qt::mightBeRichText(text)) return text;
    return QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}

void SetDesignToolTip(QWidget* widget, const QString& text) {
    widget->setProperty(designToolTip, text);
    ShowToolTip(widget, {});
}

void ShowControl(QWidget* widget, const ControlState& state) {
    widget->setEnabled(state.Enabled);
    if (widget->isHidden() == state.Visible) widget->setVisible(state.Visible);
    ShowToolTip(widget, state.ToolTipText);
}

void ShowText(QLineEdit* box, const TextState& state) {
    ShowControl(box, state);
    if (box->text() != state.Text) box->setText(state.Text);
}

void ShowCheck(QCheckBox* box, const CheckState& state) {
    ShowControl(box, state);
    box->setCheckState(state.Value == 0   ? Qt::Unchecked
                       : state.Value == 1 ? Qt::Checked
                                          : Qt::PartiallyChecked);
}

void ShowLabel(QLabel* label, const LabelState& state) {
    ShowControl(label, state);
    if (!state.Caption.isEmpty()) SetCaption(label, state.Caption);
    if (state.ForeColor >= 0) {
        SetForeColour(label, OleColour(static_cast<quint32>(state.ForeColor), label->palette()));
    }
}

void ShowList(ListBox* list, ListBoxState& state) {
    ShowControl(list, state);
    list->SetItems(&state.Items);
}

void ShowCombo(ComboBox* combo, ComboState& state) {
    ShowControl(combo, state);
    combo->SetItems(&state.Items);
    combo->ShowSelection(state.Items.ListIndex(), state.Text);
}

void ShowColouredText(controls::ColouredText* box, const RichTextState& state) {
    ShowControl(box, state);
    std::vector<controls::ColouredText::Span> spans;
    spans.reserve(state.Colours.size());
    for (const ColourSpan& span : state.Colours) spans.push_back({span.Start, span.Length, span.Colour});
    box->SetText(state.Text, spans);
    box->SetBold(state.Bold);
}

void ShowGrid(controls::DataGrid* grid, const GridState& state) {
    ShowControl(grid, state);
    if (grid->DataSource() != state.DataSource) grid->SetDataSource(state.DataSource);
    // The panes are what a screen reader enters.
    for (int i = 0; i < grid->SplitCount(); ++i) grid->Pane(i)->setAccessibleName(grid->accessibleName());
}

}  // namespace zephrin
