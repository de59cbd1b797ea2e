#include "platform/ado/providers/files/ReaderProcess.h"

#include "platform/ado/providers/files/Failures.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace zephrin::ado::files {

namespace {

const QLatin1StringView ReaderName("zephrin-file-reader");

/// A whole request fits into a pipe, so that nobody has to be there to take it.
constexpr qsizetype PipeRoom = 60'000;
constexpr int AnswerRoom = 1 << 20;

/// A name in this library, or in the program that holds it.
void Here() {}

class Pipe {
 public:
    Pipe() {
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            throw FileError(
                QStringLiteral("The reader of files can't be started: %1.").arg(qt_error_string(errno)));
    }
    ~Pipe() {
        for (const int end : ends)
            if (end >= 0) close(end);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int Out() const { return ends[0]; }
    int In() const { return ends[1]; }
    int TakeOut() { return std::exchange(ends[0], -1); }

 private:
    std::array<int, 2> ends{-1, -1};
};

/// What the reader sees of the environment: how to find its libraries, and its limits.
std::vector<char*> Environment() {
    static char locale[] = "LC_ALL=C.UTF-8";
    std::vector<char*> kept{locale};
    for (char** variable = environ; *variable; ++variable)
        for (const char* name :
             {"LD_LIBRARY_PATH=", "ZEPHRIN_READER_", "ASAN_OPTIONS=", "UBSAN_OPTIONS=", "LSAN_OPTIONS="})
            if (std::strncmp(*variable, name, std::strlen(name)) == 0) kept.push_back(*variable);
    kept.push_back(nullptr);
    return kept;
}

}  // namespace

QString FindReader() {
    if (const QString named = qEnvironmentVariable("ZEPHRIN_FILE_READER"); !named.isEmpty())
        return QFileInfo(named).isExecutable() ? named : QString();
    Dl_info library{};
    if (dladdr(reinterpret_cast<void*>(&Here), &library) == 0 || !library.dli_fname) return {};
    // The program itself may be known by the name by which it was called.
    const QString file = QFileInfo(QFile::decodeName(library.dli_fname)).canonicalFilePath();
    const QDir folder = QFileInfo(file.isEmpty() ? QCoreApplication::applicationFilePath() : file).dir();
    for (const char* place : {".", "../bin", "../../bin"}) {
        const QString program =
            QDir::cleanPath(folder.filePath(QLatin1StringView(place) + u'/' + ReaderName));
        if (QFileInfo(program).isExecutable() && QFileInfo(program).isFile()) return program;
    }
    return {};
}

ReaderProcess::ReaderProcess(const QString& program, const QByteArray& request) {
    if (request.size() > PipeRoom)
        throw FileError(QStringLiteral("The reader of files can't be asked for so much at once."));
    Pipe question;
    Pipe answers;
    // Nobody reads yet, and nobody needs to: there is room, and with its other end open no signal can come of
    // it.
    if (write(question.In(), request.constData(), size_t(request.size())) != request.size())
        throw FileError(
            QStringLiteral("The reader of files can't be asked: %1.").arg(qt_error_string(errno)));
    fcntl(answers.Out(), F_SETPIPE_SZ, AnswerRoom);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, question.Out(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, answers.In(), STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    QByteArray path = QFile::encodeName(program);
    char serve[] = "--serve";
    const std::array<char*, 3> arguments{path.data(), serve, nullptr};
    std::vector<char*> environment = Environment();
    const int error =
        posix_spawn(&process, path.constData(), &files, &attributes, arguments.data(), environment.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0) {
        process = -1;
        throw FileError(QStringLiteral("The reader of files '%1' can't be started: %2.")
                            .arg(program, qt_error_string(error)));
    }
    answer = answers.TakeOut();
}

ReaderProcess::~ReaderProcess() {
    if (answer >= 0) close(answer);
    if (process > 0) {
        kill(-process, SIGKILL);
        Reap();
    }
}

int ReaderProcess::Reap() {
    int status = 0;
    pid_t ended = -1;
    do ended = waitpid(process, &status, 0);
    while (ended < 0 && errno == EINTR);
    process = -1;
    // Somebody else in this program may have taken the news of its end.
    return ended < 0 ? 0 : status;
}

ReaderProcess::Outcome ReaderProcess::Read(char* into, qsizetype most, int milliseconds, qsizetype& count) {
    pollfd wait{answer, POLLIN, 0};
    const int ready = poll(&wait, 1, milliseconds);
    if (ready == 0 || (ready < 0 && errno == EINTR)) return Outcome::Nothing;
    const ssize_t got = read(answer, into, size_t(most));
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) return Outcome::Nothing;
    if (got <= 0) return Outcome::End;
    count = qsizetype(got);
    return Outcome::Bytes;
}

QString ReaderProcess::HowItEnded() {
    if (process <= 0) return {};
    // It closed its answer, so that it is at its end; if it isn't, it is now.
    kill(-process, SIGCONT);
    for (int look = 0; look < 100; ++look) {
        siginfo_t info{};
        if (waitid(P_PID, id_t(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid != 0) break;
        usleep(10'000);
    }
    kill(-process, SIGKILL);
    const int status = Reap();
    if (WIFSIGNALED(status)) {
        if (WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL)
            return QStringLiteral("its reading took more processor time than is allowed");
        return QStringLiteral("the reader ended at it (signal %1)").arg(WTERMSIG(status));
    }
    return WEXITSTATUS(status) == 0
               ? QString()
               : QStringLiteral("the reader ended at it (code %1)").arg(WEXITSTATUS(status));
}

}  // namespace zephrin::ado::files
