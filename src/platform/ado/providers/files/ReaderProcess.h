#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace zephrin::ado::files {

/// Where zephrin-file-reader is: beside the library or, where that is installed, in the folder of programs
/// that belongs to it. Empty where it isn't.
QString FindReader();

/// A reader at work on one request. It ends with this object, at the latest.
class ReaderProcess {
 public:
    /// Starts it; throws ado::Error where it can't be started.
    ReaderProcess(const QString& program, const QByteArray& request);
    ~ReaderProcess();
    ReaderProcess(const ReaderProcess&) = delete;
    ReaderProcess& operator=(const ReaderProcess&) = delete;

    enum class Outcome { Bytes, Nothing, End };
    /// Takes what it has answered, and waits for it up to `milliseconds`.
    Outcome Read(char* into, qsizetype most, int milliseconds, qsizetype& count);
    /// How it ended, behind the end of its answer, as the end of a sentence; empty where it ended well.
    QString HowItEnded();

 private:
    int Reap();

    pid_t process = -1;
    int answer = -1;
};

}  // namespace zephrin::ado::files
