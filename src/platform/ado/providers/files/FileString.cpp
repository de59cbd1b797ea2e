#include "platform/ado/providers/files/FileString.h"

#include "platform/ado/ConnectionText.h"
#include "platform/ado/providers/files/Failures.h"

#include <QDir>

namespace zephrin::ado::files {

namespace {

const QLatin1StringView AccessDriver("Microsoft Access Driver");
const QLatin1StringView ExcelDriver("Microsoft Excel Driver");

bool Starts(const QString& text, QLatin1StringView with) {
    return text.startsWith(with, Qt::CaseInsensitive);
}

/// The string that counts: the one inside, where OLE DB's bridge to ODBC holds it.
QString Inner(const QString& connectionString) {
    if (!Starts(ConnectionValue(connectionString, u"Provider"), QLatin1StringView("MSDASQL")))
        return connectionString;
    const QString inner = ConnectionValue(connectionString, u"Extended Properties");
    return inner.isEmpty() ? connectionString : inner;
}

QString FirstOf(const QString& text, std::initializer_list<QStringView> keys) {
    for (const QStringView key : keys)
        if (const QString value = ConnectionValue(text, key); !value.isEmpty()) return value;
    return {};
}

bool IsNo(const QString& value) {
    for (const char* word : {"no", "false", "0"})
        if (value.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0) return true;
    return false;
}

/// A password or a file of users would have to be checked, and isn't: better no answer than one that only
/// seems checked.
void RefuseSecrets(const QString& text, const OpenRequest& request, const QString& path) {
    const QString password = request.Password.isEmpty()
                                 ? FirstOf(text, {u"PWD", u"Password", u"Jet OLEDB:Database Password"})
                                 : request.Password;
    if (!password.isEmpty())
        throw FileError(
            QStringLiteral("The file '%1' can't be opened with a password: files that are protected by one "
                           "are not read.")
                .arg(path));
    if (!FirstOf(text, {u"SystemDB", u"Jet OLEDB:System Database"}).isEmpty())
        throw FileError(
            QStringLiteral("The file '%1' can't be opened with a workgroup file: its users and their rights "
                           "are not read.")
                .arg(path));
}

FileKind KindOf(const QString& text, const QString& extended) {
    if (!ConnectionValue(text, u"Provider").isEmpty() && !extended.isEmpty()) {
        if (Starts(extended, QLatin1StringView("Excel"))) return FileKind::Workbook;
        const QString kind = extended.section(u';', 0, 0);
        if (!kind.contains(u'='))
            throw FileError(
                QStringLiteral("Files of the kind '%1' can't be opened; databases of Access and workbooks of "
                               "Excel can.")
                    .arg(kind));
    }
    return Starts(ConnectionValue(text, u"Driver"), ExcelDriver) ? FileKind::Workbook : FileKind::Database;
}

}  // namespace

NamedDriver DriverOf(const QString& connectionString) {
    const QString text = Inner(connectionString);
    const QString provider = ConnectionValue(text, u"Provider");
    if (Starts(provider, QLatin1StringView("Microsoft.Jet.OLEDB")) ||
        Starts(provider, QLatin1StringView("Microsoft.ACE.OLEDB"))) {
        const bool isWorkbook =
            Starts(ConnectionValue(text, u"Extended Properties"), QLatin1StringView("Excel"));
        return {isWorkbook ? ExcelDriver : AccessDriver, false};
    }
    const QString driver = ConnectionValue(text, u"Driver");
    if (Starts(driver, AccessDriver) || Starts(driver, ExcelDriver)) return {driver, true};
    return {};
}

FileTarget ReadFileString(const OpenRequest& request) {
    const QString text = Inner(request.ConnectionString);
    const QString extended = ConnectionValue(text, u"Extended Properties");
    FileTarget target;
    target.Path = FirstOf(text, {u"Data Source", u"DBQ"});
    if (target.Path.isEmpty())
        throw FileError(
            QStringLiteral("The connection string names no file. Add Data Source=FILE or DBQ=FILE."));
    if (const QString folder = ConnectionValue(text, u"DefaultDir"); !folder.isEmpty())
        target.Path = QDir(folder).filePath(target.Path);
    RefuseSecrets(text, request, target.Path);
    target.Kind = KindOf(text, extended);
    target.HasHeads =
        !IsNo(FirstOf(extended, {u"HDR"})) && !IsNo(FirstOf(text, {u"HDR", u"FirstRowHasNames"}));
    target.MixedAsText = FirstOf(extended, {u"IMEX"}) == u"1" || FirstOf(text, {u"IMEX"}) == u"1";
    target.CacheFolder = ConnectionValue(text, u"Cache Folder");
    using providers::sqlite::Dialect;
    target.Speaks = providers::sqlite::DialectByWords(request.ConnectionString)
                        .value_or(target.Kind == FileKind::Workbook ? Dialect::Excel : Dialect::Access);
    return target;
}

}  // namespace zephrin::ado::files
