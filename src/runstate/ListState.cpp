#include "runstate/ListState.h"

#include <algorithm>

namespace zephrin {

namespace {

bool ComesBefore(const QString& left, const QString& right) {
    const int order = QString::compare(left, right, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : left < right;
}

}  // namespace

ListState::ListState(Order listOrder, QObject* parent) : QAbstractListModel(parent), order(listOrder) {}

QString ListState::List(int index) const {
    return items.value(index);
}

void ListState::SetListIndex(int index) {
    if (index < -1 || index >= ListCount()) index = -1;
    if (index == listIndex) return;
    listIndex = index;
    Q_EMIT ListIndexChanged(listIndex);
    Q_EMIT Click();
}

void ListState::SetText(const QString& text) {
    SetListIndex(text.isEmpty() ? -1 : static_cast<int>(items.indexOf(text)));
}

void ListState::AddItem(const QString& text, int index) {
    if (order == Order::Sorted) {
        index = static_cast<int>(std::upper_bound(items.cbegin(), items.cend(), text, ComesBefore) -
                                 items.cbegin());
    } else if (index < 0 || index > ListCount()) {
        index = ListCount();
    }
    beginInsertRows({}, index, index);
    meanings.clear();
    items.insert(index, text);
    endInsertRows();
    if (listIndex >= index) Q_EMIT ListIndexChanged(++listIndex);
}

void ListState::AddItems(const QStringList& texts, const QStringList& theirMeanings) {
    if (texts.isEmpty()) return;
    if (order == Order::Arrival) {
        meanings = items.isEmpty() && theirMeanings.size() == texts.size() ? theirMeanings : QStringList();
        beginInsertRows({}, ListCount(), ListCount() + static_cast<int>(texts.size()) - 1);
        items.append(texts);
        endInsertRows();
        return;
    }
    const QString selected = Text();
    beginResetModel();
    items.append(texts);
    std::stable_sort(items.begin(), items.end(), ComesBefore);
    endResetModel();
    listIndex = listIndex < 0 ? -1 : static_cast<int>(items.indexOf(selected));
    Q_EMIT ListIndexChanged(listIndex);
}

void ListState::RemoveItem(int index) {
    if (index < 0 || index >= ListCount()) return;
    const bool selectedWent = index == listIndex;
    beginRemoveRows({}, index, index);
    items.removeAt(index);
    if (!meanings.isEmpty()) meanings.removeAt(index);
    if (selectedWent) {
        listIndex = -1;
    } else if (index < listIndex) {
        --listIndex;
    }
    endRemoveRows();
    Q_EMIT ListIndexChanged(listIndex);
}

void ListState::Clear() {
    beginResetModel();
    items.clear();
    meanings.clear();
    listIndex = -1;
    endResetModel();
    Q_EMIT ListIndexChanged(-1);
}

int ListState::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ListCount();
}

QVariant ListState::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:  // what a drop-down takes its text from
        case Qt::AccessibleTextRole:
            return List(index.row());
        case Qt::ToolTipRole:
            return meanings.value(index.row(), List(index.row()));
        case Qt::AccessibleDescriptionRole:
            return meanings.isEmpty() ? QVariant() : meanings.at(index.row());
        default:
            return {};
    }
}

}  // namespace zephrin
