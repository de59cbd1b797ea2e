#include "flow/MoveLists.h"

namespace zephrin {

int MoveSelected(const MoveDirection& move) {
    const int index = move.From.Items.ListIndex();
    if (index < 0) return -1;
    move.To.Items.AddItem(move.From.Items.Text());
    move.From.Items.RemoveItem(index);
    return index;
}

void SelectAfterMove(const MoveDirection& move, int oldIndex) {
    const int count = move.From.Items.ListCount();
    const bool selects = oldIndex >= 0 && oldIndex < count;
    if (selects) move.From.Items.SetListIndex(oldIndex);
    move.One.Enabled = selects;
    move.All.Enabled = count > 0;
    if (count == 0) move.AllBack.Enabled = true;
}

void MoveAll(const MoveDirection& move) {
    move.To.Items.AddItems(move.From.Items.Items());
    move.From.Items.Clear();
    move.All.Enabled = false;
    move.AllBack.Enabled = true;
    move.One.Enabled = false;
}

}  // namespace zephrin
