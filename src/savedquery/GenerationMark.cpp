#include "savedquery/GenerationMark.h"

#include <QUuid>

namespace zephrin {

namespace {

constexpr QByteArrayView opening("<?zephrin-save ");
constexpr QByteArrayView closing("?>\n");

}  // namespace

QByteArray NewMark() {
    return QUuid::createUuid().toByteArray(QUuid::Id128);
}

QByteArray WithMark(const QByteArray& xml, const QByteArray& mark) {
    return xml + opening.toByteArray() + mark + closing.toByteArray();
}

QByteArray MarkOf(const QByteArray& file) {
    if (!file.endsWith(closing)) return {};
    const qsizetype begin = file.lastIndexOf(opening);
    if (begin < 0) return {};
    return file.mid(begin + opening.size()).chopped(closing.size());
}

}  // namespace zephrin
