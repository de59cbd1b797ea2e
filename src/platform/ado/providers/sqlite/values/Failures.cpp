#include "platform/ado/providers/sqlite/values/Failures.h"

namespace zephrin::ado::providers::sqlite {

QString FailureSource() {
    return QStringLiteral("Zephrin SQLite Provider");
}

Error Failure(int number, const QString& description, qsizetype position) {
    Error error(number, description, FailureSource());
    error.SetPosition(position);
    return error;
}

namespace {
constexpr QChar packing(u'\x02');
}

QByteArray PackedFailure(int number, qsizetype position, const QString& words) {
    return (packing + QString::number(number) + packing + QString::number(position) + packing + words)
        .toUtf8();
}

Error UnpackedFailure(const QString& packed) {
    const qsizetype second = packed.indexOf(packing, 1);
    const qsizetype third = second < 0 ? -1 : packed.indexOf(packing, second + 1);
    if (!packed.startsWith(packing) || third < 0) return Failure(FailureNumber::Conversion, packed);
    return Failure(packed.sliced(1, second - 1).toInt(), packed.sliced(third + 1),
                   packed.sliced(second + 1, third - second - 1).toInt());
}

Error ConnectFailure(const QString& description) {
    return Failure(ErrorNumber::ProviderFailed, description);
}

}  // namespace zephrin::ado::providers::sqlite
