#include "platform/ado/FieldList.h"

#include <zephrin/ado/Error.h>

namespace zephrin::ado {

namespace {

Error NoSuchItem() {
    return Error(
        ErrorNumber::ItemNotFound,
        QStringLiteral(
            "Item cannot be found in the collection corresponding to the requested name or ordinal."));
}

}  // namespace

FieldList::FieldList(QList<Field> given) : fields(std::move(given)) {
    firstOf.reserve(fields.size());
    // From the last to the first, so that the first of a name stays.
    for (int index = Count() - 1; index >= 0; --index) firstOf.insert(KeyOf(fields.at(index).Name), index);
}

QString FieldList::KeyOf(QStringView name) {
    return name.toString().toCaseFolded();
}

const Field& FieldList::At(int index) const {
    if (!Contains(index)) throw NoSuchItem();
    return fields.at(index);
}

int FieldList::Find(QStringView name) const {
    return firstOf.value(KeyOf(name), -1);
}

int FieldList::Require(QStringView name) const {
    const int index = Find(name);
    if (index < 0) throw NoSuchItem();
    return index;
}

void FieldList::Append(const Field& field) {
    const QString key = KeyOf(field.Name);
    if (firstOf.contains(key))
        throw Error(ErrorNumber::InvalidArgument,
                    QStringLiteral("A field named '%1' is in the collection already.").arg(field.Name));
    firstOf.insert(key, Count());
    fields.append(field);
}

}  // namespace zephrin::ado
