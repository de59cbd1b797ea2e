#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace zephrin::test {

/// A PostgreSQL server of the tests' own: on loopback, in a scratch folder, gone with the test program
/// however that ends.
class PostgresServer {
 public:
    /// The server of this program, started at the first call; null where none can run, and `whyNot` then says
    /// so.
    static PostgresServer* Shared(QString& whyNot);
    ~PostgresServer();

    static constexpr const char* User = "zephrin";
    static constexpr const char* Password = "se;cret}";

    int Port() const { return port; }
    /// A string for the driver, up to the database; the login is whoever's it is.
    QString Address(const QString& database = QStringLiteral("postgres")) const;
    /// The whole string.
    QString ConnectionString() const;

    /// Ends the server as a crash would: no connection is told.
    void Kill();
    /// Starts it again on the same port; false when it doesn't come up.
    bool Start();

 private:
    PostgresServer();
    bool Prepare(QString& whyNot);
    bool RunTool(const QString& tool, const QStringList& arguments);
    QStringList AsServerUser(const QString& program, const QStringList& arguments) const;

    QTemporaryDir folder;
    QString binaries;
    QProcess server;
    int port = 0;
};

/// A port of loopback on which nobody listens.
int FreePort();

/// Listens on loopback, accepts what the kernel accepts, and never says a word.
class MuteServer {
 public:
    MuteServer();
    ~MuteServer();
    MuteServer(const MuteServer&) = delete;
    MuteServer& operator=(const MuteServer&) = delete;
    int Port() const { return port; }

 private:
    int port = 0;  // before the socket, which sets it
    int socket;
};

}  // namespace zephrin::test
