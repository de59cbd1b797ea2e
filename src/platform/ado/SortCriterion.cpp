#include "platform/ado/SortCriterion.h"

#include <zephrin/ado/Error.h>

namespace zephrin::ado {

namespace {

Error Unreadable() {
    return Error(ErrorNumber::InvalidArgument,
                 QStringLiteral(
                     "Arguments are of the wrong type, are out of acceptable range, or are in conflict with "
                     "one another."));
}

/// Takes the name between brackets; a closing bracket inside it is written twice.
QString TakeBracketed(QStringView& rest) {
    QString name;
    for (qsizetype at = 1; at < rest.size(); ++at) {
        if (rest.at(at) == u']') {
            if (at + 1 == rest.size() || rest.at(at + 1) != u']') {
                rest = rest.mid(at + 1);
                return name;
            }
            ++at;
        }
        name += rest.at(at);
    }
    throw Unreadable();
}

/// Takes what stands before the next blank or comma.
QStringView TakeWord(QStringView& rest) {
    qsizetype end = 0;
    while (end < rest.size() && !rest.at(end).isSpace() && rest.at(end) != u',') ++end;
    const QStringView word = rest.first(end);
    rest = rest.mid(end);
    return word;
}

bool TakeDescending(QStringView& rest) {
    const QStringView word = TakeWord(rest);
    if (word.compare(u"DESC", Qt::CaseInsensitive) == 0) return true;
    if (!word.isEmpty() && word.compare(u"ASC", Qt::CaseInsensitive) != 0) throw Unreadable();
    return false;
}

struct Item {
    QString Name;
    bool Descending = false;
};

Item TakeItem(QStringView& rest) {
    Item item;
    rest = rest.trimmed();
    item.Name = rest.startsWith(u'[') ? TakeBracketed(rest) : TakeWord(rest).toString();
    // Behind the name stands a blank, a comma or nothing.
    if (item.Name.isEmpty() || (!rest.isEmpty() && rest.front() != u',' && !rest.front().isSpace()))
        throw Unreadable();
    rest = rest.trimmed();
    item.Descending = TakeDescending(rest);
    rest = rest.trimmed();
    return item;
}

}  // namespace

std::vector<SortKey> ReadSortCriterion(const QString& criterion, const FieldList& fields) {
    std::vector<SortKey> keys;
    QStringView rest = QStringView(criterion).trimmed();
    while (!rest.isEmpty()) {
        const Item item = TakeItem(rest);
        const int column = fields.Require(item.Name);
        keys.push_back({column, fields.At(column).Type, item.Descending});
        if (rest.isEmpty()) break;
        if (rest.front() != u',') throw Unreadable();
        rest = rest.mid(1);
        if (rest.trimmed().isEmpty()) throw Unreadable();
    }
    return keys;
}

}  // namespace zephrin::ado
