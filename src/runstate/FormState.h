#pragma once

#include "runstate/Collection.h"
#include "runstate/ListState.h"

#include <zephrin/ado/Recordset.h>

#include <QString>

#include <array>
#include <vector>

namespace zephrin {

/// A stretch of a text in one colour. Later stretches are painted over earlier ones.
struct ColourSpan {
    int Start = 0;  ///< from 0, in UTF-16 units
    int Length = 0;
    quint32 Colour = 0;  ///< 0xffRRGGBB
    bool operator==(const ColourSpan&) const = default;
};

struct ControlState {
    bool Enabled = true;
    bool Visible = true;
    QString ToolTipText = {};
};

struct ButtonState : ControlState {
    QString Tag = {};
};

struct TextState : ControlState {
    QString Text = {};
};

struct LabelState : ControlState {
    QString Caption = {};
    /// 0x00BBGGRR; -1 leaves the look of the form.
    int ForeColor = -1;
};

struct CheckState : ControlState {
    int Value = 0;  ///< 0 clear, 1 ticked, 2 grey
};

/// A group of option buttons of which one is selected.
template <int N>
struct OptionState {
    std::array<ControlState, N> Options;
    int Selected = 0;
};

/// A list with the state of its control around it. The selection is in Items.
struct ListBoxState : ControlState {
    explicit ListBoxState(ListState::Order order = ListState::Order::Arrival) : Items(order) {}
    ListState Items;
};

/// A drop-down whose text may be typed. Text is what it shows; choosing an item sets it.
struct ComboState : ControlState {
    ListState Items;
    QString Text = {};
};

/// A coloured text. Text holds CR LF line breaks, and the spans count in it.
struct RichTextState : TextState {
    bool Bold = false;
    std::vector<ColourSpan> Colours;
};

struct GridState : ControlState {
    ado::RecordsetPtr DataSource;
    bool ColumnButtons = false;
};

/// The numbers of the wizard's tabs.
enum class WizardTab : int { Tables = 0, Joins = 1, Fields = 2, Build = 3, Results = 4 };
inline constexpr int WizardTabCount = 5;

struct TabState {
    int Tab = 0;
    std::array<bool, WizardTabCount> TabVisible{true, true, true, true, true};
    std::array<bool, WizardTabCount> TabEnabled{true, true, true, true, true};
};

enum class MousePointer { Default = 0, Hourglass = 11 };

/// The wizard's form without its widgets: every control that a rule reads or sets, under its own name, and
/// the values that the form keeps for itself. Operations change this; the widgets show it and report what the
/// user does.
///
/// One instance lives from form load to unload. A new one is as the form's design has it: the statement is
/// shown, not the grid of criteria, and what needs a choice first is off.
struct FormState {
    FormState();

    // --- The frame
    // ---------------------------------------------------------------------------------------------
    QString Caption;
    QString StatusText;
    MousePointer Pointer = MousePointer::Default;
    /// Object name of the control that an operation gives the focus to; taken by the form when it shows the
    /// state.
    QString FocusRequest;
    TabState TabZPG;
    ButtonState cmdSaveQuery, cmdDeleteQuery, cmdOpenQuery, cmdExit;

    // --- Select Tables
    // -----------------------------------------------------------------------------------------
    ListBoxState lstZPQTableSelection{ListState::Order::Sorted};
    ListBoxState lstZPQTableTo;
    ButtonState cmdZPQTableRight{{false}}, cmdZPQTableRightAll{{false}}, cmdZPQTableLeft{{false}},
        cmdZPQTableLeftAll{{false}};
    /// Tables that were taken back, item and key the table's text.
    Collection RemoveTables;
    /// The selection of tables changed since the generators last looked at it.
    bool TablesChanged = false;

    // --- Build Joins
    // -------------------------------------------------------------------------------------------
    std::array<ComboState, 2> cmbJoinTables;
    std::array<ListBoxState, 2> lstJoinFields;
    ComboState cmbJoinType;
    ListBoxState lstJoinCompare;
    ButtonState cmdlockTables{{false, true, {}}, QStringLiteral("0")};
    ButtonState cmdAddJoin{{false}}, cmdResetJoins{{false}};
    LabelState lblJoinTableFrom, lblJoinTableTo;
    GridState dgrJoins;
    /// The join expression as derived from rsJoins.
    QString JoinText;

    // --- Select Fields
    // -----------------------------------------------------------------------------------------
    ListBoxState lstZPQFieldFrom, lstZPQFieldTo;
    ButtonState cmdZPQFieldRight{{false}}, cmdZPQFieldRightAll{{false}}, cmdZPQFieldLeft{{false}},
        cmdZPQFieldLeftAll{{false}};

    // --- Build Query
    // -------------------------------------------------------------------------------------------
    OptionState<3> optQuery;
    LabelState fraBuildQuery;
    ListBoxState lstSelectedFields;
    ListBoxState lstOperands;
    ComboState cmbAvailableValues1, cmbAvailableValues2;
    ControlState fraAndOr;
    OptionState<2> optAndOr;
    ButtonState cmdCommit{{false}}, cmdFieldValues{{false}};
    ControlState fraQueryOptions;
    CheckState chkDistinct, chkPercent;
    TextState txtTopX;
    ControlState lblTopX;
    ButtonState cmdEditWhere, cmdEditGroup, cmdEditOrder, cmdEditCalcField, cmdCalcField;
    RichTextState txtSQL;
    GridState dgrSQL;
    ControlState fraTxt, txtField, txtOr, txtValue;
    std::array<LabelState, 2> lblSQLLabel;
    ButtonState cmdSplit, cmdDeleteSplit, cmdSQLView, cmdResetSQL;
    ButtonState cmdRunQuery{{false}};
    ButtonState cmdCreateView{{true, false}};
    /// Twips; the width that cmdRunQuery has beside or without cmdCreateView.
    int cmdRunQueryWidth = 1245;
    /// "TOP n", "TOP n PERCENT" or empty.
    QString TopClause;
    /// The field in hand, as delimited text, and how often it has a criterion (0: none).
    QString CriteriaField;
    int FieldHasCriteria = 0;
    /// What the values that the value boxes offer are; Empty while they offer none.
    ado::DataType LookedUpType = ado::DataType::Empty;
    /// What each row of lstSelectedFields stands for (see FieldKey), index for index.
    struct FieldKey {
        QString Key;     ///< the field, the group expression or the calculated expression
        QString Column;  ///< its column of rsWhere: the field itself, or the alias
    };
    std::vector<FieldKey> SelectedFieldKeys;
    QString GridMode;
    bool GridShowsHaving = false;
    /// The delimiter of the commit before, which an unknown dialect keeps.
    QString ValueDelimiter;
    /// The operator words that the criteria scanner knows, filled at form load.
    QStringList OperatorTokens;

    // --- Query Results
    // -----------------------------------------------------------------------------------------
    GridState dgrQueryResults;
    RichTextState txtSQLErrors;
    ButtonState cmdAsc{{false}}, cmdDesc{{false}};
    ControlState fraExcel;
    ButtonState cmdExcel{{false}};
    ButtonState cmdResAddSplit, cmdResDeleteSplit{{false}};
    int SortColumn = 0;
    /// Set by a run that was done with ZPBShowQueryResults False on a form that is not modal; the form
    /// minimises itself and sets it back.
    bool Minimised = false;

    // --- Saved queries
    // -----------------------------------------------------------------------------------------
    /// Path of the query in hand; not empty right after one was opened, emptied by a failure.
    QString QueryPath;
    /// What the query was when it was opened or saved last (see DescribeQuery); empty while it never was.
    QStringList KeptQuery;
};

}  // namespace zephrin
