#include "flow/CriteriaCell.h"

namespace zephrin {

QString InsertKey(const QString& text, int selectionStart, const QString& key) {
    return text.left(selectionStart) + key + text.mid(selectionStart);
}

void AcceptCriteria(ZPGGlobalDeclarations& state, const QString& opening, const QString& edited) {
    state.CriteriaChanged = edited != opening;
    if (state.CriteriaChanged) state.CurrentCellText = edited;
}

}  // namespace zephrin
