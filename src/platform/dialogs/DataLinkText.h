#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace zephrin::datalink {

/// A connection string in the pieces that the pages of the prompt show. Lenient: what is not well formed
/// comes as far as it can be read, the provider will say the rest.
struct Keyword {
    QString Name;
    QString Value;
    qsizetype ValueStart = 0;  ///< where the value stands in the string, its quotes included
    qsizetype ValueLength = 0;
};

QList<Keyword> Split(const QString& connectionString);
/// The value of the first keyword of that name, without regard to case.
QString ValueOf(const QList<Keyword>& keywords, QLatin1StringView name);
/// Whether the string holds no keyword but these.
bool HoldsOnly(const QList<Keyword>& keywords, std::initializer_list<QLatin1StringView> names);

/// The string with each password as dots, to be shown.
QString Masked(const QString& connectionString);

/// The kind of database for which statements will be written by words anywhere in the string, were they part
/// of a name; empty where no words say it.
QString SaidDialect(const QString& connectionString);
/// Whether the string names a kind of database of its own that prevails over the words in the rest of it.
bool OverrulesWords(const QString& connectionString);
inline bool SaysDialect(const QString& connectionString) {
    return !SaidDialect(connectionString).isEmpty();
}

/// A file that is opened without a server, and what is in it.
enum class FileKind { Database, AccessDatabase, Workbook };
struct FileLink {
    FileKind Kind = FileKind::Database;
    QString Path;
    QString Dialect;        ///< of a database of the embedded engine
    bool ReadOnly = false;  ///< the same
    bool HasHeads = true;   ///< of a workbook: the first row of a sheet names its columns
};
QString ToText(const FileLink& link);
/// The file that the string names; nothing where it says more than a FileLink could.
std::optional<FileLink> FileOf(const QString& connectionString);

/// A data source that is set up on this computer.
struct SourceLink {
    QString Name;
    QString User;
    QString Password;
    QString Dialect;
};
QString ToText(const SourceLink& link);

/// A driver, and where it is to go.
struct DriverLink {
    QString Driver;
    QString Server;
    QString Port;
    QString Database;
    QString User;
    QString Password;
    bool Trusted = false;
    bool Encrypt = false;
    bool TrustCertificate = false;
    QString Dialect;
};
QString ToText(const DriverLink& link);

/// How the driver is told to encrypt, and to take any certificate of the server's; empty where its string has
/// no words for it. Each driver has its own.
QString EncryptionText(const QString& driver, bool encrypt, bool trustCertificate);
/// Reads back what EncryptionText wrote; nothing where the string says it otherwise.
struct EncryptionTicks {
    bool Encrypt = false;
    bool TrustCertificate = false;
};
std::optional<EncryptionTicks> ReadEncryption(const QString& driver, const QList<Keyword>& keywords);
/// Whether the keyword speaks of it, whichever driver's it is.
bool SpeaksOfEncryption(const Keyword& keyword);

/// Whether a value means yes in a connection string.
bool IsYes(const QString& value);

/// Whether the driver can log on as the user of this computer.
bool TakesTrustedLogin(const QString& driver);

}  // namespace zephrin::datalink
