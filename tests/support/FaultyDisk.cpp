#include "support/FaultyDisk.h"

#include <QDir>
#include <QFile>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using zephrin::test::FaultyDisk;

std::atomic<bool> armed = false;
std::atomic<int> stepsLeft = 0;
std::string folder;
int errorNumber = 0;
FaultyDisk::Fault faultKind{};

bool IsBelow(std::string_view path) {
    return armed && path.substr(0, folder.size()) == folder;
}

bool IsBelow(int handle) {
    if (!armed) return false;
    std::array<char, 4096> path{};
    const ssize_t length =
        ::readlink(("/proc/self/fd/" + std::to_string(handle)).c_str(), path.data(), path.size());
    return length > 0 && IsBelow(std::string_view(path.data(), size_t(length)));
}

/// Whether this step goes wrong; errno says how then.
template <class File>
bool GoesWrong(File file) {
    if (!IsBelow(file)) return false;
    const int left = stepsLeft--;
    if (left > 0 || (left < 0 && faultKind != FaultyDisk::Fault::FromThenOn)) return false;
    errno = errorNumber;
    return true;
}

void EndIfKilled() {
    if (faultKind == FaultyDisk::Fault::Kill) ::raise(SIGKILL);
}

template <class Function>
Function* Real(Function*, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

// What the C library calls it, with the fault before it.
#define REAL(function) static auto* const real = Real(&::function, #function)
#define FAIL(file, answer)   \
    if (GoesWrong(file)) {   \
        EndIfKilled();       \
        errno = errorNumber; \
        return answer;       \
    }

// Libraries find only what is not hidden.
#pragma GCC visibility push(default)
extern "C" {

int open64(const char* path, int flags, ...) {
    REAL(open64);
    FAIL(path, -1)
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : mode_t{};
    va_end(rest);
    return real(path, flags, mode);
}
int open(const char* path, int flags, ...) {
    REAL(open);
    FAIL(path, -1)
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : mode_t{};
    va_end(rest);
    return real(path, flags, mode);
}
ssize_t write(int handle, const void* bytes, size_t count) {
    REAL(write);
    if (GoesWrong(handle)) {
        static_cast<void>(real(handle, bytes, count / 2));
        EndIfKilled();
        errno = errorNumber;
        return -1;
    }
    return real(handle, bytes, count);
}
size_t fwrite(const void* bytes, size_t size, size_t count, FILE* file) {
    REAL(fwrite);
    FAIL(fileno(file), 0)
    return real(bytes, size, count, file);
}
int fclose(FILE* file) {
    REAL(fclose);
    const bool fails = GoesWrong(fileno(file));
    if (fails) EndIfKilled();
    const int answer = real(file);
    if (fails) errno = errorNumber;
    return fails ? EOF : answer;
}
// Nobody cuts the power in a test: what is asked of the disk is counted, and not waited for.
int fsync(int handle) {
    FAIL(handle, -1)
    return 0;
}
int fdatasync(int handle) {
    FAIL(handle, -1)
    return 0;
}
int rename(const char* from, const char* to) noexcept {
    REAL(rename);
    FAIL(to, -1)
    return real(from, to);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    REAL(renameat2);
    FAIL(to, -1)
    return real(fromFolder, from, toFolder, to, flags);
}
int link(const char* from, const char* to) noexcept {
    REAL(link);
    FAIL(to, -1)
    return real(from, to);
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    REAL(linkat);
    FAIL(to, -1)
    return real(fromFolder, from, toFolder, to, flags);
}
int unlink(const char* path) noexcept {
    REAL(unlink);
    FAIL(path, -1)
    return real(path);
}

}  // extern "C"
#pragma GCC visibility pop

namespace zephrin::test {

FaultyDisk::FaultyDisk(const QString& below, int step, int error, Fault fault) {
    folder = QFile::encodeName(QDir(below).absolutePath()).toStdString();
    stepsLeft = step;
    errorNumber = error;
    faultKind = fault;
    armed = true;
}

FaultyDisk::~FaultyDisk() {
    armed = false;
}

bool FaultyDisk::Happened() const {
    return stepsLeft < 0;
}

bool IsKilledIn(const std::function<void()>& act) {
    const pid_t child = fork();
    if (child == 0) {
        act();
        _exit(0);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFSIGNALED(status);
}

}  // namespace zephrin::test
