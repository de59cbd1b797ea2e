#include "PostgresServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <arpa/inet.h>
#include <csignal>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zephrin::test {

namespace {

/// A socket bound to some free port of loopback, which `port` then tells.
int BindToLoopback(int& port) {
    const int bound = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ::bind(bound, reinterpret_cast<sockaddr*>(&address), length);
    ::getsockname(bound, reinterpret_cast<sockaddr*>(&address), &length);
    port = ntohs(address.sin_port);
    return bound;
}

QString NewestBinaries() {
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    for (const QString& version :
         versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
        const QString folder = versions.filePath(version + QStringLiteral("/bin/"));
        if (QFile::exists(folder + QStringLiteral("initdb"))) return folder;
    }
    return {};
}

}  // namespace

int FreePort() {
    int port = 0;
    ::close(BindToLoopback(port));
    return port;
}

MuteServer::MuteServer() : socket(BindToLoopback(port)) {
    ::listen(socket, 8);
}
MuteServer::~MuteServer() {
    ::close(socket);
}

PostgresServer* PostgresServer::Shared(QString& whyNot) {
    static QString failure;
    static const std::unique_ptr<PostgresServer> server = [] {
        std::unique_ptr<PostgresServer> made(new PostgresServer);
        if (!made->Prepare(failure)) made.reset();
        return made;
    }();
    whyNot = failure;
    return server.get();
}

PostgresServer::PostgresServer() : port(FreePort()) {}

PostgresServer::~PostgresServer() {
    if (server.state() != QProcess::NotRunning) Kill();
}

/// The server refuses to run as root, so root runs it as the user that its package makes. It ends with this
/// program.
QStringList PostgresServer::AsServerUser(const QString& program, const QStringList& arguments) const {
    QStringList command{QStringLiteral("--pdeathsig"), QStringLiteral("QUIT")};
    if (::geteuid() == 0)
        command << QStringLiteral("--reuid=postgres") << QStringLiteral("--regid=postgres")
                << QStringLiteral("--init-groups");
    return command << (binaries + program) << arguments;
}

bool PostgresServer::RunTool(const QString& tool, const QStringList& arguments) {
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(QStringLiteral("setpriv"), AsServerUser(tool, arguments));
    return process.waitForFinished(60'000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

bool PostgresServer::Prepare(QString& whyNot) {
    binaries = NewestBinaries();
    if (binaries.isEmpty()) {
        whyNot = QStringLiteral("PostgreSQL's server is not installed");
        return false;
    }
    QFile password(folder.filePath(QStringLiteral("password")));
    if (!password.open(QFile::WriteOnly) || password.write(Password) < 0) return false;
    password.close();
    if (::geteuid() == 0)
        QProcess::execute(QStringLiteral("chown"),
                          {QStringLiteral("-R"), QStringLiteral("postgres"), folder.path()});
    if (!RunTool(QStringLiteral("initdb"),
                 {QStringLiteral("-D"), folder.filePath(QStringLiteral("data")), QStringLiteral("-A"),
                  QStringLiteral("scram-sha-256"), QStringLiteral("-U"), QLatin1StringView(User),
                  QStringLiteral("--pwfile"), password.fileName(), QStringLiteral("--no-sync"),
                  QStringLiteral("--encoding=UTF8"), QStringLiteral("--locale=C")})) {
        whyNot = QStringLiteral("PostgreSQL's server could not be prepared in %1").arg(folder.path());
        return false;
    }
    if (!Start()) {
        whyNot = QStringLiteral("PostgreSQL's server did not start on port %1").arg(port);
        return false;
    }
    return true;
}

bool PostgresServer::Start() {
    server.start(QStringLiteral("setpriv"),
                 AsServerUser(QStringLiteral("postgres"),
                              {QStringLiteral("-D"), folder.filePath(QStringLiteral("data")),
                               QStringLiteral("-p"), QString::number(port), QStringLiteral("-c"),
                               QStringLiteral("listen_addresses=127.0.0.1"), QStringLiteral("-c"),
                               QStringLiteral("unix_socket_directories="), QStringLiteral("-F")}));
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < 30'000 && server.state() != QProcess::NotRunning) {
        if (RunTool(QStringLiteral("pg_isready"),
                    {QStringLiteral("-q"), QStringLiteral("-h"), QStringLiteral("127.0.0.1"),
                     QStringLiteral("-p"), QString::number(port)}))
            return true;
        server.waitForFinished(50);
    }
    return false;
}

void PostgresServer::Kill() {
    ::kill(pid_t(server.processId()), SIGQUIT);
    server.waitForFinished(10'000);
}

QString PostgresServer::Address(const QString& database) const {
    return QStringLiteral("Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=%1;Database=%2;")
        .arg(port)
        .arg(database);
}

QString PostgresServer::ConnectionString() const {
    return Address() +
           QStringLiteral("UID=%1;PWD={se;cret}}};Description=SQL Server").arg(QLatin1StringView(User));
}

}  // namespace zephrin::test
