#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace zephrin {

/// What stands beside a file while it is replaced. The names are hidden, not longer for a long name, and
/// fresh: they hold the mark of the save that makes them.

/// The new content, until it takes its place.
QString ComingFile(const QString& path, const QByteArray& mark);
/// The former content, until the whole family is replaced.
QString FormerFile(const QString& path, const QByteArray& mark);

/// The working files of a folder: of saves that are at work, and of those that came to no end.
class WorkingFiles {
 public:
    explicit WorkingFiles(const QString& folder);

    /// The former contents of a file of the folder.
    QStringList FormersOf(const QString& path) const;
    QStringList AllOf(const QString& path) const;

 private:
    QStringList names;
};

}  // namespace zephrin
