#include "runstate/Dialect.h"

#include <array>
#include <functional>

namespace zephrin {

namespace {

struct DetectionRule {
    QLatin1StringView Words;
    QLatin1StringView Dialect;
};

/// Tried in this order; the first whose words occur anywhere in the string decides. No rule gives Oracle.
constexpr std::array detectionRules{
    DetectionRule{QLatin1StringView("SQL Server"), QLatin1StringView("SQL Server")},
    DetectionRule{QLatin1StringView("SQLOLEDB"), QLatin1StringView("SQL Server")},
    DetectionRule{QLatin1StringView("Provider=Microsoft.Jet"), QLatin1StringView("MS Access")},
    DetectionRule{QLatin1StringView("MS Access"), QLatin1StringView("MS Access")},
    DetectionRule{QLatin1StringView("Microsoft Excel Driver"), QLatin1StringView("MS Excel")},
};

constexpr int providerNotSupported = -2147221491;

/// An earlier dialect stays where the string names none: a second connection with a string of another shape
/// goes on in the dialect of the first.
void ApplyDialect(ZPGGlobalDeclarations& state, const QString& connectionString) {
    const QString dialect = DetectDialect(connectionString);
    if (!dialect.isEmpty()) {
        state.gDatabaseType = dialect;
        state.gDelimOpen = QStringLiteral("[");
        state.gDelimClose = QStringLiteral("]");
    }
    if (state.gDatabaseType.isEmpty()) {
        throw ado::Error(providerNotSupported, QStringLiteral("Database Provider not supported"),
                         QStringLiteral("Provider Property"));
    }
}

/// Takes one step of opening. A step that finds the connection open closes it and is taken once more.
void TakeStep(ado::Connection& connection, const std::function<void()>& step) {
    try {
        step();
    } catch (const ado::Error& error) {
        if (error.Number() != ado::ErrorNumber::ObjectOpen || connection.State() != ado::ObjectState::Open)
            throw;
        connection.Close();
        step();
    }
}

}  // namespace

QString DetectDialect(const QString& connectionString) {
    for (const DetectionRule& rule : detectionRules)
        if (connectionString.contains(rule.Words, Qt::CaseInsensitive)) return rule.Dialect;
    return {};
}

bool IsServerDialect(const QString& databaseType) {
    return databaseType == QLatin1StringView("SQL Server") || databaseType == QLatin1StringView("Oracle");
}

bool IsFileDialect(const QString& databaseType) {
    return databaseType == QLatin1StringView("MS Access") || databaseType == QLatin1StringView("MS Excel");
}

QStringList GroupOperators(const QString& databaseType) {
    const QStringList common{QStringLiteral("GROUP BY"), QStringLiteral("SUM"), QStringLiteral("COUNT"),
                             QStringLiteral("AVG"),      QStringLiteral("MIN"), QStringLiteral("MAX"),
                             QStringLiteral("STDEV"),    QStringLiteral("VAR")};
    if (IsFileDialect(databaseType))
        return common + QStringList{QStringLiteral("FIRST"), QStringLiteral("LAST")};
    if (!IsServerDialect(databaseType)) return {};
    return common + QStringList{QStringLiteral("SUM DISTINCT"), QStringLiteral("COUNT DISTINCT"),
                                QStringLiteral("AVG DISTINCT"), QStringLiteral("MIN DISTINCT"),
                                QStringLiteral("MAX DISTINCT")};
}

ConnectionErrors OpenDatabaseConnection(ZPGGlobalDeclarations& state, const QString& connectionString,
                                        int connectTimeout, int commandTimeout, const QString& userName,
                                        const QString& password) {
    state.gConnectionTimeout = connectTimeout;
    state.gCommandTimeout = commandTimeout;
    state.gConnectionString = connectionString;
    state.gPassword = password;
    state.gUserId = userName;
    try {
        ApplyDialect(state, connectionString);
        const Work work(state, QStringLiteral("Connecting .."));
        ado::Connection& connection = state.SharedConnection();
        TakeStep(connection, [&] { connection.SetConnectionTimeout(connectTimeout); });
        TakeStep(connection, [&] { connection.SetCommandTimeout(commandTimeout); });
        TakeStep(connection, [&] { connection.SetConnectionString(connectionString); });
        TakeStep(connection, [&] { connection.Open({}, userName, password); });
        TakeStep(connection, [&] { state.rsSchemaTables = connection.OpenSchema(ado::Schema::Tables); });
    } catch (const ado::Error& error) {
        return {{error.Description(), QString::number(error.Number()), error.Source()}};
    }
    return {};
}

}  // namespace zephrin
