#include "runstate/Collection.h"

namespace zephrin {

Collection::Collection(const QStringList& texts) {
    for (const QString& text : texts) Add(text);
}

QString Collection::Item(int position) const { return items.value(position - 1); }

bool Collection::Contains(const QString& key) const { return places.contains(key.toCaseFolded()); }

bool Collection::Add(const QString& item, const QString& key) {
    const QString folded = key.toCaseFolded();
    if (places.contains(folded)) return false;
    places.insert(folded, Count());
    items.append(item);
    keys.append(folded);
    return true;
}

bool Collection::Remove(const QString& key) {
    const auto place = places.constFind(key.toCaseFolded());
    return place != places.constEnd() && RemoveAt(*place + 1);
}

bool Collection::RemoveAt(int position) {
    if (position < 1 || position > Count()) return false;
    places.remove(keys.at(position - 1));
    items.removeAt(position - 1);
    keys.removeAt(position - 1);
    for (int place = position - 1; place < Count(); ++place) places[keys.at(place)] = place;
    return true;
}

void Collection::Clear() { *this = Collection(); }

}  // namespace zephrin
