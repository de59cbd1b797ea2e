#include "platform/dialogs/DataLinkText.h"

#include <QStringList>

#include <algorithm>

namespace zephrin::datalink {

namespace {

/// The strings of the files that the program itself reads: an old form each, which other programs know as
/// well.
constexpr const char* AccessStart = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
constexpr const char* ExcelDriver = "Microsoft Excel Driver (*.xls, *.xlsx, *.xlsm, *.xlsb)";

bool Same(const QString& text, QLatin1StringView word) {
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

bool Holds(const QString& text, QLatin1StringView part) {
    return text.contains(part, Qt::CaseInsensitive);
}

/// In quotes where the embedded provider's string needs them.
QString Quoted(const QString& value) {
    const bool plain = !value.contains(u';') && !value.startsWith(u'"') && !value.startsWith(u'\'') &&
                       value.trimmed() == value;
    if (plain) return value;
    return u'"' + QString(value).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

/// In braces where ODBC's string needs them.
QString Braced(const QString& value) {
    const bool plain =
        !value.contains(u';') && !value.contains(u'{') && !value.contains(u'}') && value.trimmed() == value;
    if (plain) return value;
    return u'{' + QString(value).replace(u'}', QStringLiteral("}}")) + u'}';
}

void Add(QString& text, const char* name, const QString& value) {
    if (!value.isEmpty()) text += QLatin1StringView(name) + u'=' + Braced(value) + u';';
}

void AddDialect(QString& text, const QString& dialect) {
    if (!SaysDialect(text)) Add(text, "Dialect", dialect);
}

/// End of the value that begins at `at`: behind its closing brace or quote, or at the next semicolon.
qsizetype ValueEnd(const QString& text, qsizetype at) {
    const QChar open = at < text.size() ? text[at] : QChar();
    const QChar close = open == u'{' ? QChar(u'}') : open;
    if (open == u'{' || open == u'"' || open == u'\'') {
        for (qsizetype i = at + 1; i < text.size(); ++i) {
            if (text[i] != close) continue;
            if (i + 1 < text.size() && text[i + 1] == close) {
                ++i;
            } else {
                return i + 1;
            }
        }
    }
    const qsizetype end = text.indexOf(u';', at);
    return end < 0 ? text.size() : end;
}

QString Unquoted(QString value) {
    value = value.trimmed();
    if (value.size() < 2) return value;
    const QChar open = value.front();
    const QChar close = open == u'{' ? QChar(u'}') : open;
    if ((open != u'{' && open != u'"' && open != u'\'') || value.back() != close) return value;
    return value.mid(1, value.size() - 2).replace(QString(2, close), QString(close));
}

/// A password, or a string in the string that holds one.
bool IsSecret(const Keyword& keyword) {
    const auto names = [](const QString& text) {
        return Holds(text, QLatin1StringView("PWD")) || Holds(text, QLatin1StringView("password"));
    };
    return names(keyword.Name) ||
           (Same(keyword.Name, QLatin1StringView("Extended Properties")) && names(keyword.Value));
}

}  // namespace

QList<Keyword> Split(const QString& text) {
    QList<Keyword> keywords;
    // Looked for anew only once it is passed: looking from each part would take quadratic time.
    qsizetype equals = -1;
    for (qsizetype at = 0; at < text.size();) {
        if (equals < at) equals = text.indexOf(u'=', at);
        const qsizetype end = text.indexOf(u';', at);
        if (equals < 0) break;
        if (end >= 0 && end < equals) {
            at = end + 1;
            continue;
        }
        Keyword keyword;
        keyword.Name = text.mid(at, equals - at).trimmed();
        keyword.ValueStart = equals + 1;
        while (keyword.ValueStart < text.size() && text[keyword.ValueStart].isSpace()) ++keyword.ValueStart;
        keyword.ValueLength = ValueEnd(text, keyword.ValueStart) - keyword.ValueStart;
        keyword.Value = Unquoted(text.mid(keyword.ValueStart, keyword.ValueLength));
        at = keyword.ValueStart + keyword.ValueLength;
        keywords.append(keyword);
        while (at < text.size() && (text[at] == u';' || text[at].isSpace())) ++at;
    }
    return keywords;
}

QString ValueOf(const QList<Keyword>& keywords, QLatin1StringView name) {
    for (const Keyword& keyword : keywords)
        if (Same(keyword.Name, name)) return keyword.Value;
    return {};
}

bool HoldsOnly(const QList<Keyword>& keywords, std::initializer_list<QLatin1StringView> names) {
    return std::all_of(keywords.begin(), keywords.end(), [&names](const Keyword& keyword) {
        return std::any_of(names.begin(), names.end(),
                           [&keyword](QLatin1StringView name) { return Same(keyword.Name, name); });
    });
}

QString Masked(const QString& connectionString) {
    QString shown = connectionString;
    const QList<Keyword> keywords = Split(connectionString);
    // From the end, so that the positions in front stay right. Always the same count: the length is told to
    // nobody.
    for (auto keyword = keywords.crbegin(); keyword != keywords.crend(); ++keyword)
        if (IsSecret(*keyword) && keyword->ValueLength > 0)
            shown.replace(keyword->ValueStart, keyword->ValueLength, QString(6, QChar(0x2022)));
    return shown;
}

QString SaidDialect(const QString& connectionString) {
    // In the order in which the connection looks for them.
    constexpr struct {
        const char* Words;
        const char* Dialect;
    } rules[] = {{"SQL Server", "SQL Server"},
                 {"SQLOLEDB", "SQL Server"},
                 {"Provider=Microsoft.Jet", "MS Access"},
                 {"MS Access", "MS Access"},
                 {"Microsoft Excel Driver", "Microsoft Excel Driver"}};
    for (const auto& rule : rules)
        if (Holds(connectionString, QLatin1StringView(rule.Words))) return QLatin1StringView(rule.Dialect);
    return {};
}

bool OverrulesWords(const QString& connectionString) {
    QString rest;
    for (const Keyword& keyword : Split(connectionString))
        if (!Same(keyword.Name, QLatin1StringView("Dialect")))
            rest += keyword.Name + u'=' + keyword.Value + u';';
    return SaysDialect(rest) && SaidDialect(rest) != SaidDialect(connectionString);
}

bool SpeaksOfEncryption(const Keyword& keyword) {
    for (const char* name :
         {"Encrypt", "TrustServerCertificate", "Encryption", "SSLMode", "ForceTLS", "SSLVerify"})
        if (Same(keyword.Name, QLatin1StringView(name))) return true;
    return false;
}

bool IsYes(const QString& value) {
    for (const char* yes : {"yes", "true", "1", "mandatory", "SSPI"})
        if (Same(value, QLatin1StringView(yes))) return true;
    return false;
}

QString EncryptionText(const QString& driver, bool encrypt, bool trustCertificate) {
    // The vendor's newest driver encrypts unasked, so that trust alone means something to it. FreeTDS looks
    // at no certificate, and the oldest driver has no word for it.
    constexpr struct {
        const char* Driver;
        const char* Encrypted;
        const char* EncryptedAndTrusted;
        const char* Trusted;
    } drivers[] = {
        {"FreeTDS", "Encryption=require;", "Encryption=require;", ""},
        {"PostgreSQL", "SSLmode=verify-full;", "SSLmode=require;", ""},
        {"MySQL", "SSLMODE=VERIFY_IDENTITY;", "SSLMODE=REQUIRED;", ""},
        {"MariaDB", "FORCETLS=1;SSLVERIFY=1;", "FORCETLS=1;SSLVERIFY=0;", ""},
        {"for SQL Server", "Encrypt=Yes;", "Encrypt=Yes;TrustServerCertificate=Yes;",
         "TrustServerCertificate=Yes;"},
        {"Native Client", "Encrypt=Yes;", "Encrypt=Yes;TrustServerCertificate=Yes;",
         "TrustServerCertificate=Yes;"},
        {"SQL Server", "Encrypt=Yes;", "Encrypt=Yes;", ""},
    };
    for (const auto& each : drivers) {
        if (!Holds(driver, QLatin1StringView(each.Driver))) continue;
        if (encrypt) return QLatin1StringView(trustCertificate ? each.EncryptedAndTrusted : each.Encrypted);
        return trustCertificate ? QLatin1StringView(each.Trusted) : QLatin1StringView();
    }
    return {};
}

std::optional<EncryptionTicks> ReadEncryption(const QString& driver, const QList<Keyword>& keywords) {
    const auto words = [](const QList<Keyword>& list) {
        QStringList said;
        for (const Keyword& keyword : list)
            if (SpeaksOfEncryption(keyword))
                said << keyword.Name.toLower() + u'=' +
                            (IsYes(keyword.Value) ? QStringLiteral("yes") : keyword.Value.toLower());
        said.sort();
        return said;
    };
    const QStringList said = words(keywords);
    for (const auto& ticks : {EncryptionTicks{false, false}, {true, false}, {true, true}, {false, true}})
        if (words(Split(EncryptionText(driver, ticks.Encrypt, ticks.TrustCertificate))) == said) return ticks;
    return std::nullopt;
}

QString ToText(const FileLink& link) {
    if (link.Path.isEmpty()) return {};
    if (link.Kind == FileKind::AccessDatabase) return QLatin1StringView(AccessStart) + Quoted(link.Path);
    if (link.Kind == FileKind::Workbook)
        return QStringLiteral("Driver={%1};DBQ=").arg(QLatin1StringView(ExcelDriver)) + Braced(link.Path) +
               (link.HasHeads ? QString() : QStringLiteral(";FirstRowHasNames=0"));
    QString text = QStringLiteral("Provider=SQLite;Dialect=%1;").arg(link.Dialect);
    if (link.ReadOnly) text += QLatin1StringView("Mode=Read;");
    return text + QLatin1StringView("Data Source=") + Quoted(link.Path);
}

std::optional<FileLink> FileOf(const QString& connectionString) {
    using Words = QLatin1StringView;
    const QList<Keyword> keywords = Split(connectionString);
    FileLink link;
    if (Same(ValueOf(keywords, Words("Driver")), Words(ExcelDriver))) {
        link.Kind = FileKind::Workbook;
        link.Path = ValueOf(keywords, Words("DBQ"));
        link.HasHeads = ValueOf(keywords, Words("FirstRowHasNames")) != u"0";
        if (HoldsOnly(keywords, {Words("Driver"), Words("DBQ"), Words("FirstRowHasNames")})) return link;
    }
    link.Path = ValueOf(keywords, Words("Data Source"));
    const QString provider = ValueOf(keywords, Words("Provider"));
    if (Holds(provider, Words("Microsoft.Jet.OLEDB")) || Holds(provider, Words("Microsoft.ACE.OLEDB"))) {
        link.Kind = FileKind::AccessDatabase;
        // Others than our own say more, a version for one.
        if (connectionString.startsWith(Words(AccessStart), Qt::CaseInsensitive) &&
            HoldsOnly(keywords, {Words("Provider"), Words("Data Source")}))
            return link;
    }
    if (!Same(provider, Words("SQLite")) ||
        !HoldsOnly(keywords, {Words("Provider"), Words("Dialect"), Words("Data Source"), Words("Mode")}))
        return std::nullopt;
    link.Dialect = ValueOf(keywords, Words("Dialect"));
    link.ReadOnly = Same(ValueOf(keywords, Words("Mode")), Words("Read"));
    return link;
}

QString ToText(const SourceLink& link) {
    if (link.Name.isEmpty()) return {};
    QString text;
    Add(text, "DSN", link.Name);
    Add(text, "UID", link.User);
    Add(text, "PWD", link.Password);
    AddDialect(text, link.Dialect);
    return text;
}

bool TakesTrustedLogin(const QString& driver) {
    return Holds(driver, QLatin1StringView("SQL Server")) ||
           Holds(driver, QLatin1StringView("Native Client")) || Holds(driver, QLatin1StringView("FreeTDS"));
}

QString ToText(const DriverLink& link) {
    if (link.Driver.isEmpty()) return {};
    // The vendor's drivers take the port behind a comma, all others as a keyword; files have a keyword of
    // their own.
    const bool commaPort =
        TakesTrustedLogin(link.Driver) && !Holds(link.Driver, QLatin1StringView("FreeTDS"));
    const bool file = Holds(link.Driver, QLatin1StringView("Access Driver")) ||
                      Holds(link.Driver, QLatin1StringView("Excel Driver"));
    QString text =
        QStringLiteral("Driver={%1};").arg(QString(link.Driver).replace(u'}', QStringLiteral("}}")));
    Add(text, "Server", commaPort && !link.Port.isEmpty() ? link.Server + u',' + link.Port : link.Server);
    if (!commaPort) Add(text, "Port", link.Port);
    Add(text, file ? "DBQ" : "Database", link.Database);
    if (link.Trusted && TakesTrustedLogin(link.Driver)) {
        Add(text, "Trusted_Connection", QStringLiteral("Yes"));
    } else {
        Add(text, "UID", link.User);
        Add(text, "PWD", link.Password);
    }
    text += EncryptionText(link.Driver, link.Encrypt, link.TrustCertificate);
    AddDialect(text, link.Dialect);
    return text;
}

}  // namespace zephrin::datalink
