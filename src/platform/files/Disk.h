#pragma once

#include <QByteArray>
#include <QString>

/// Steps on the disk that lose nothing: what is written stands on the disk before it takes a former file's
/// place.
namespace zephrin::files {

/// Thrown by a step that fails. Of what stood there before nothing is lost.
struct Failure {
    QString Path;
    QString Reason;  ///< in the system's words

    QString Text() const;
};

enum class Access {
    Usual,      ///< that of the file that stood there, or what new files get
    OwnerOnly,  ///< nobody else may read it
};

/// Makes the file at `path`, or replaces it as a whole. Through a link, what it leads to is replaced.
void Replace(const QString& path, const QByteArray& content, Access access = Access::Usual);

/// Makes a file under a name that nobody has yet, for its owner alone; it is on the disk then. One that fails
/// is gone again.
void WriteNew(const QString& path, const QByteArray& content);

/// The content of a file; fails for what is no ordinary file, and where it is longer than `most`.
QByteArray Read(const QString& path, qint64 most);

/// Makes `copy` hold what `path` holds, whatever takes the place of `path` from now on: a second name of the
/// same file, or a copy where there are no such names.
void Keep(const QString& path, const QString& copy);

/// Takes the place of a file that stands at `to`.
void Rename(const QString& from, const QString& to);
/// Fails where there is a file at `to`.
void RenameNew(const QString& from, const QString& to);

/// A file that is not there is no failure.
void Remove(const QString& path);

/// Waits until the names in `folder` are on the disk; a file that was renamed before is there under its new
/// name then.
void SyncFolder(const QString& folder);
/// The same for what is written in a file.
void SyncFile(const QString& path);

}  // namespace zephrin::files
