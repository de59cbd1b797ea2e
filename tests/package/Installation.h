#pragma once

#include <QDir>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace zephrin::test {

/// What a program said and how it ended.
struct Outcome {
    int ExitCode = -1;
    QString Output;
    QString Errors;
    bool Ended = false;

    bool Succeeded() const { return Ended && ExitCode == 0; }
    /// Everything, for the message of a test that fails.
    std::string Text() const;
};

/// Runs a program to its end, in at most `seconds`.
Outcome RunProgram(const QString& program, const QStringList& arguments,
                   const QProcessEnvironment& environment, int seconds = 120);
Outcome RunProgram(const QString& program, const QStringList& arguments);

/// This build, installed into a folder and then moved to another one, and the projects that are built against
/// it there.
class Installation {
 public:
    Installation();

    /// Empty, or what went wrong while it was installed.
    QString Failure() const { return failure; }
    QString Prefix() const { return prefix; }
    QString LibraryFolder() const;
    QString Path(const QString& name) const { return folder.filePath(name); }

    /// Configures `project` in a build folder of that name.
    Outcome Configure(const QString& project, const QString& name, const QStringList& variables = {}) const;
    Outcome Build(const QString& name) const;
    /// Starts a program that is played by `script`: "press NAME", "pick LIST ITEM", "tab NAME INDEX", "answer
    /// CAPTION", "type TEXT" and "close NAME".
    Outcome Play(const QString& program, const QStringList& arguments, const QStringList& script) const;

 private:
    QDir folder;
    QString prefix;
    QString failure;
};

}  // namespace zephrin::test
