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

Error ConnectFailure(const QString& description) {
    return Failure(ErrorNumber::ProviderFailed, description);
}

}  // namespace zephrin::ado::providers::sqlite
