#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <vector>

namespace zephrin {

/// The dialog that orders, edits and deletes the rows of one working recordset, without its widgets. EditMode
/// of the state says which: "Group", "Order" or "Calc".
struct FieldOrderForm {
    struct Row {
        QString Field;
        /// Empty for what has none, as an order.
        QString Alias;
        bool operator==(const Row&) const = default;
    };
    std::vector<Row> Rows;
    int ListIndex = -1;
    QString Alias;
    bool Output = false;
    bool OutputVisible = false;
    bool AliasVisible = false;
    bool EditVisible = false;
    bool DeleteEnabled = false;
    bool EditEnabled = false;
    bool UpEnabled = false;
    bool DownEnabled = false;
};

/// What frmZPG does before the dialog is shown; behind it the statement is shown anew. `mode` becomes
/// EditMode.
void BeginFieldOrder(ZPGGlobalDeclarations& state, const QString& mode);

FieldOrderForm LoadFieldOrder(const ZPGGlobalDeclarations& state);
/// Reads the rows anew; nothing is selected then.
void FillOrderLists(const ZPGGlobalDeclarations& state, FieldOrderForm& form);
void OrderRowClicked(const ZPGGlobalDeclarations& state, FieldOrderForm& form, int index);
/// Writes the row's output flag at once.
void OutputClicked(ZPGGlobalDeclarations& state, FieldOrderForm& form, bool output);
/// Moves the row in hand up or down, in the lists alone.
void MoveOrderRow(const ZPGGlobalDeclarations& state, FieldOrderForm& form, bool down);

/// Hands the calculated field in hand to its editor; after the editor closed, grouping and ordering follow
/// its new text. The list keeps its sequence, moves that nobody confirmed yet included.
void BeginCalcEdit(ZPGGlobalDeclarations& state, const FieldOrderForm& form);
void EndCalcEdit(ZPGGlobalDeclarations& state, FieldOrderForm& form, const QString& oldExpression);

/// Asks, then deletes the row in hand and what hangs on it, at once. The others keep their sequence.
void DeleteOrderRow(ZPGGlobalDeclarations& state, FieldOrderForm& form);

/// OK: gives the recordset the order of the list.
void AcceptFieldOrder(ZPGGlobalDeclarations& state, const FieldOrderForm& form);

}  // namespace zephrin
