#include "platform/ado/providers/sqlite/values/Dialect.h"

#include <array>

namespace zephrin::ado::providers::sqlite {

std::optional<Dialect> DialectByWords(QStringView connectionString) {
    struct Rule {
        QLatin1StringView Words;
        Dialect Means;
    };
    // Order matters: a string may hold the words of two dialects, and the wizard takes the first that fits.
    static constexpr std::array rules{
        Rule{QLatin1StringView("SQL Server"), Dialect::SqlServer},
        Rule{QLatin1StringView("SQLOLEDB"), Dialect::SqlServer},
        Rule{QLatin1StringView("Provider=Microsoft.Jet"), Dialect::Access},
        Rule{QLatin1StringView("MS Access"), Dialect::Access},
        Rule{QLatin1StringView("Microsoft Excel Driver"), Dialect::Excel},
    };
    for (const Rule& rule : rules)
        if (connectionString.contains(rule.Words, Qt::CaseInsensitive)) return rule.Means;
    return std::nullopt;
}

QString DialectKeyword(Dialect dialect) {
    switch (dialect) {
        case Dialect::SqlServer:
            return QStringLiteral("SQL Server");
        case Dialect::Access:
            return QStringLiteral("MS Access");
        case Dialect::Excel:
            return QStringLiteral("Microsoft Excel Driver");
    }
    return {};
}

}  // namespace zephrin::ado::providers::sqlite
