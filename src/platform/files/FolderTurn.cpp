#include "platform/files/FolderTurn.h"

#include "platform/files/Disk.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zephrin::files {

namespace {

constexpr int longestWait = 5'000;
constexpr unsigned long pause = 20;

}  // namespace

FolderTurn::FolderTurn(const QString& folder, IfTaken ifTaken)
    : handle(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    // Whatever is wrong with the folder, the first file in it will tell.
    if (handle < 0) return;
    const QDeadlineTimer deadline(longestWait);
    while (::flock(handle, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR) continue;
        if (errno != EWOULDBLOCK || ifTaken == IfTaken::GiveUp) return;
        if (deadline.hasExpired()) {
            ::close(handle);
            throw Failure{folder, QStringLiteral("Another program is saving there.")};
        }
        QThread::msleep(pause);
    }
    held = true;
}

FolderTurn::~FolderTurn() {
    // Closing gives the turn back.
    if (handle >= 0) ::close(handle);
}

}  // namespace zephrin::files
