#include "platform/files/Disk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace zephrin::files {

namespace {

[[noreturn]] void FailBySystem(const QString& path, int error) {
    throw Failure{path, qt_error_string(error)};
}

/// A file system that can't do it at all has no other way to keep what was written.
bool IsUnknownThere(int error) {
    return error == EINVAL || error == ENOTSUP || error == EROFS;
}

/// Writes all of it, and doesn't come back before it is on the disk. The file has no buffer: of what a buffer
/// holds, the end would be written unseen when the file is closed.
void WriteThrough(QFile& file, const QByteArray& content) {
    if (file.write(content) != content.size() || !file.flush())
        throw Failure{file.fileName(), file.errorString()};
    SyncFile(file.handle(), file.fileName());
}

}  // namespace

QString Failure::Text() const {
    return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(Path), Reason);
}

void Replace(const QString& path, const QByteArray& content, Access access) {
    QSaveFile file(path);
    const auto require = [&file](bool succeeded) {
        if (!succeeded) throw Failure{file.fileName(), file.errorString()};
    };
    require(file.open(QIODevice::WriteOnly));
    // Before the first byte is in it.
    require(access == Access::Usual || file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    // A short content stands in a buffer only; commit() would not look at what becomes of it.
    require(file.write(content) == content.size() && file.flush());
    SyncFile(file.handle(), path);
    require(file.commit());
    SyncFolder(QFileInfo(path).absolutePath());
}

void WriteNew(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                   QFile::ReadOwner | QFile::WriteOwner))
        throw Failure{path, file.errorString()};
    try {
        WriteThrough(file, content);
    } catch (const Failure&) {
        file.remove();
        throw;
    }
}

QByteArray Read(const QString& path, qint64 most) {
    // A pipe or a device would be read for ever.
    if (!QFileInfo(path).isFile()) throw Failure{path, QStringLiteral("The file cannot be found.")};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw Failure{path, file.errorString()};
    const QByteArray content = file.read(most + 1);
    if (file.error() != QFile::NoError) throw Failure{path, file.errorString()};
    if (content.size() > most) throw Failure{path, QStringLiteral("The file is too large.")};
    return content;
}

void Keep(const QString& path, const QString& copy) {
    if (::link(QFile::encodeName(path).constData(), QFile::encodeName(copy).constData()) == 0) return;
    const int error = errno;
    if (error != EPERM && error != ENOTSUP && error != ENOSYS && error != EMLINK && error != EXDEV)
        FailBySystem(copy, error);
    WriteNew(copy, Read(path, QFileInfo(path).size()));
}

void Rename(const QString& from, const QString& to) {
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        FailBySystem(to, errno);
}

void Remove(const QString& path) {
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT) FailBySystem(path, errno);
}

void SyncFolder(const QString& folder) {
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // A folder in which one may write and not look around.
    if (handle < 0 && errno == EACCES) return;
    if (handle < 0) FailBySystem(folder, errno);
    const int error = ::fsync(handle) == 0 ? 0 : errno;
    ::close(handle);
    if (error != 0 && !IsUnknownThere(error)) FailBySystem(folder, error);
}

void SyncFile(int handle, const QString& path) {
    if (::fsync(handle) != 0 && !IsUnknownThere(errno)) FailBySystem(path, errno);
}

}  // namespace zephrin::files
