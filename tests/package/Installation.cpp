#include "Installation.h"

#include <QDir>
#include <QProcess>

namespace zephrin::test {

std::string Outcome::Text() const {
    const QString end = Ended ? QStringLiteral("exit code %1").arg(ExitCode) : QStringLiteral("did not end");
    return (end + u'\n' + Output + Errors).toStdString();
}

Outcome RunProgram(const QString& program, const QStringList& arguments,
                   const QProcessEnvironment& environment, int seconds) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments, QIODevice::ReadOnly);
    Outcome outcome;
    outcome.Ended = process.waitForFinished(seconds * 1000) && process.exitStatus() == QProcess::NormalExit;
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
    }
    outcome.ExitCode = process.exitCode();
    outcome.Output = QString::fromUtf8(process.readAllStandardOutput());
    outcome.Errors = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

Outcome RunProgram(const QString& program, const QStringList& arguments) {
    return RunProgram(program, arguments, QProcessEnvironment::systemEnvironment());
}

Installation::Installation() : folder(QStringLiteral(ZEPHRIN_WORK)), prefix(Path(QStringLiteral("moved"))) {
    folder.removeRecursively();
    const QString first = Path(QStringLiteral("installed"));
    const Outcome install = RunProgram(
        QStringLiteral(ZEPHRIN_CMAKE),
        {QStringLiteral("--install"), QStringLiteral(ZEPHRIN_BUILD_DIR), QStringLiteral("--prefix"), first});
    if (!install.Succeeded())
        failure = QString::fromStdString(install.Text());
    else if (!QDir().rename(first, prefix))
        failure = QStringLiteral("the installed tree cannot be moved");
}

QString Installation::LibraryFolder() const {
    return prefix + QStringLiteral("/" ZEPHRIN_LIBDIR);
}

Outcome Installation::Configure(const QString& project, const QString& name,
                                const QStringList& variables) const {
    QStringList arguments{QStringLiteral("-S"),
                          project,
                          QStringLiteral("-B"),
                          Path(name),
                          QStringLiteral("-GNinja"),
                          QStringLiteral("-DCMAKE_BUILD_TYPE=" ZEPHRIN_BUILD_TYPE),
                          QStringLiteral("-DCMAKE_CXX_COMPILER=" ZEPHRIN_CXX),
                          QStringLiteral("-DCMAKE_CXX_COMPILER_LAUNCHER=" ZEPHRIN_LAUNCHER),
                          QStringLiteral("-DCMAKE_PREFIX_PATH=") + prefix};
    for (const QString& variable : variables) arguments << QStringLiteral("-D") + variable;
    return RunProgram(QStringLiteral(ZEPHRIN_CMAKE), arguments);
}

Outcome Installation::Build(const QString& name) const {
    return RunProgram(QStringLiteral(ZEPHRIN_CMAKE), {QStringLiteral("--build"), Path(name)});
}

Outcome Installation::Play(const QString& program, const QStringList& arguments,
                           const QStringList& script) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(ZEPHRIN_PLUGINS));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("player"));
    environment.insert(QStringLiteral("ZEPHRIN_PLAY"), script.join(u'\n'));
    return RunProgram(program, arguments, environment);
}

}  // namespace zephrin::test
