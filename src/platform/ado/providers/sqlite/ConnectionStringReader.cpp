#include "platform/ado/providers/sqlite/ConnectionStringReader.h"

#include "platform/ado/ConnectionText.h"
#include "platform/ado/providers/sqlite/values/Failures.h"

#include <algorithm>
#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

/// Reads a value from `at` on and leaves `at` behind its semicolon.
QString TakeValue(QStringView text, qsizetype& at) {
    while (at < text.size() && text[at].isSpace()) ++at;
    const QChar quote = at < text.size() ? text[at] : QChar();
    QString value;
    if (quote == u'"' || quote == u'\'') {
        for (++at; at < text.size(); ++at) {
            if (text[at] == quote) {
                if (at + 1 >= text.size() || text[at + 1] != quote) break;
                ++at;
            }
            value += text[at];
        }
        const qsizetype end = text.indexOf(u';', at);
        at = end < 0 ? text.size() : end + 1;
        return value;
    }
    const qsizetype end = text.indexOf(u';', at);
    value = text.sliced(at, (end < 0 ? text.size() : end) - at).trimmed().toString();
    at = end < 0 ? text.size() : end + 1;
    return value;
}

bool IsKnown(const QString& name) {
    // The last ones are what hosts and data link dialogs add to any string; they mean nothing for a file.
    static constexpr std::array known{
        QLatin1StringView("Provider"),
        QLatin1StringView("Dialect"),
        QLatin1StringView("Data Source"),
        QLatin1StringView("Mode"),
        QLatin1StringView("User ID"),
        QLatin1StringView("UID"),
        QLatin1StringView("Password"),
        QLatin1StringView("PWD"),
        QLatin1StringView("Timeout"),
        QLatin1StringView("Connect Timeout"),
        QLatin1StringView("Persist Security Info"),
    };
    return std::any_of(known.begin(), known.end(),
                       [&](QLatin1StringView word) { return name.compare(word, Qt::CaseInsensitive) == 0; });
}

void RequireKnown(const QList<Keyword>& keywords) {
    bool behindSecret = false;
    for (const Keyword& keyword : keywords) {
        // What stands behind a password may be the rest of one that lacks its quotes.
        if (!IsKnown(keyword.Name))
            throw ConnectFailure(behindSecret
                                     ? QStringLiteral("The connection string holds an unknown keyword behind "
                                                      "the password. A password with "
                                                      "a semicolon stands in quotes.")
                                     : QStringLiteral("The connection string holds the unknown keyword '%1'.")
                                           .arg(keyword.Name));
        behindSecret = behindSecret || IsSecretName(keyword.Name);
    }
}

bool IsReadOnly(const QString& mode) {
    const auto is = [&](QLatin1StringView word) { return mode.compare(word, Qt::CaseInsensitive) == 0; };
    if (mode.isEmpty() || is(QLatin1StringView("ReadWrite")) || is(QLatin1StringView("Read/Write")))
        return false;
    if (is(QLatin1StringView("Read"))) return true;
    throw ConnectFailure(
        QStringLiteral("The connection string says Mode=%1; the modes are Read and ReadWrite.").arg(mode));
}

/// The dialect of the keyword, held against the words of the whole string: who reads the string only by its
/// words must come to the same dialect, or statements would be written in one and run in the other.
Dialect CheckedDialect(const QString& named, const QString& connectionString) {
    const std::optional<Dialect> byWords = DialectByWords(connectionString);
    if (named.isEmpty()) {
        if (byWords) return *byWords;
        throw ConnectFailure(
            QStringLiteral("The connection string names no dialect. Add Dialect=SQL Server, "
                           "Dialect=MS Access or Dialect=Microsoft Excel Driver."));
    }
    for (const Dialect dialect : {Dialect::SqlServer, Dialect::Access, Dialect::Excel}) {
        if (named.compare(DialectKeyword(dialect), Qt::CaseInsensitive) != 0) continue;
        if (byWords == dialect) return dialect;
        throw ConnectFailure(
            QStringLiteral(
                "The connection string says Dialect=%1, but also holds words (perhaps in the path) that "
                "stand for %2. Rename what holds them, or change the dialect.")
                .arg(named, DialectKeyword(byWords.value_or(dialect))));
    }
    throw ConnectFailure(
        QStringLiteral("The dialect '%1' is not supported. The dialects are SQL Server, MS Access and "
                       "Microsoft Excel Driver.")
            .arg(named));
}

}  // namespace

QList<Keyword> SplitConnectionString(QStringView connectionString) {
    QList<Keyword> keywords;
    qsizetype at = 0;
    // Looked for anew only once it is passed: looking from each part would take quadratic time.
    qsizetype equals = connectionString.indexOf(u'=');
    while (at < connectionString.size()) {
        if (equals >= 0 && equals < at) equals = connectionString.indexOf(u'=', at);
        const qsizetype semicolon = connectionString.indexOf(u';', at);
        if (equals < 0 || (semicolon >= 0 && semicolon < equals)) {
            const qsizetype end = semicolon < 0 ? connectionString.size() : semicolon;
            const QString stray = connectionString.sliced(at, end - at).trimmed().toString();
            if (!stray.isEmpty()) keywords.append({stray, QString()});
            at = end + 1;
            continue;
        }
        const QString name = connectionString.sliced(at, equals - at).trimmed().toString();
        at = equals + 1;
        keywords.append({name, TakeValue(connectionString, at)});
    }
    return keywords;
}

QString KeywordValue(const QList<Keyword>& keywords, QLatin1StringView name) {
    const auto found = std::find_if(keywords.rbegin(), keywords.rend(), [&](const Keyword& keyword) {
        return keyword.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == keywords.rend() ? QString() : found->Value;
}

OpenOptions ReadConnectionString(const QString& connectionString) {
    const QList<Keyword> keywords = SplitConnectionString(connectionString);
    RequireKnown(keywords);
    OpenOptions options;
    options.Path = KeywordValue(keywords, QLatin1StringView("Data Source"));
    if (options.Path.isEmpty())
        throw ConnectFailure(QStringLiteral("The connection string names no file. Add Data Source=FILE."));
    options.Speaks = CheckedDialect(KeywordValue(keywords, QLatin1StringView("Dialect")), connectionString);
    options.ReadOnly = IsReadOnly(KeywordValue(keywords, QLatin1StringView("Mode")));
    return options;
}

}  // namespace zephrin::ado::providers::sqlite
