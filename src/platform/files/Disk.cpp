#include "platform/files/Disk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
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
    return error == EINVAL || error == ENOTSUP;
}

/// Opens, synchronises and closes what stands at `path`.
void Sync(const QString& path, int flags) {
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | flags);
    // What may be written to and not be read, a folder as a rule.
    if (handle < 0 && errno == EACCES) return;
    if (handle < 0) FailBySystem(path, errno);
    const int error = ::fsync(handle) == 0 ? 0 : errno;
    ::close(handle);
    if (error != 0 && !IsUnknownThere(error)) FailBySystem(path, error);
}

void Sync(const QFileDevice& file) {
    if (::fsync(file.handle()) != 0 && !IsUnknownThere(errno)) FailBySystem(file.fileName(), errno);
}

/// Writes all of it, and doesn't come back before it is on the disk. The file has no buffer: of what a buffer
/// holds, the end would be written unseen when the file is closed.
void WriteThrough(QFile& file, const QByteArray& content) {
    if (file.write(content) != content.size() || !file.flush())
        throw Failure{file.fileName(), file.errorString()};
    Sync(file);
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
    Sync(file);
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
    // Room is made for as much as is asked for. What tells no size is read all the same.
    const qint64 size = file.size();
    const QByteArray content = file.read(size > 0 ? std::min(size, most) + 1 : most + 1);
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

void RenameNew(const QString& from, const QString& to) {
    const QByteArray source = QFile::encodeName(from), target = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return;
    if (errno != EINVAL && errno != ENOSYS) FailBySystem(to, errno);
    // A file system that can't look and rename in one.
    if (QFileInfo::exists(to)) FailBySystem(to, EEXIST);
    Rename(from, to);
}

void Remove(const QString& path) {
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT) FailBySystem(path, errno);
}

void SyncFolder(const QString& folder) {
    Sync(folder, O_DIRECTORY);
}

void SyncFile(const QString& path) {
    Sync(path, 0);
}

}  // namespace zephrin::files
