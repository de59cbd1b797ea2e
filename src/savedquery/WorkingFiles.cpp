#include "savedquery/WorkingFiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

namespace zephrin {

namespace {

const auto prefix = QStringLiteral(".zpb-");
const auto coming = QStringLiteral(".new");
const auto former = QStringLiteral(".old");

/// The same for each file of that name, and for no other in its folder.
QString Stem(const QString& path) {
    const QByteArray name = QFileInfo(path).fileName().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(name, QCryptographicHash::Sha256).toHex().left(20);
    return prefix + QString::fromLatin1(hash) + u'-';
}

QString Beside(const QString& path, const QString& name) {
    return QFileInfo(path).absoluteDir().filePath(name);
}

}  // namespace

QString ComingFile(const QString& path, const QByteArray& mark) {
    return Beside(path, Stem(path) + QString::fromLatin1(mark) + coming);
}

QString FormerFile(const QString& path, const QByteArray& mark) {
    return Beside(path, Stem(path) + QString::fromLatin1(mark) + former);
}

WorkingFiles::WorkingFiles(const QString& folder)
    : names(QDir(folder).entryList({prefix + u'*'}, QDir::Files | QDir::Hidden)) {}

QStringList WorkingFiles::FormersOf(const QString& path) const {
    QStringList found = AllOf(path);
    found.removeIf([](const QString& each) { return !each.endsWith(former); });
    return found;
}

QStringList WorkingFiles::AllOf(const QString& path) const {
    QStringList found;
    for (const QString& name : names)
        if (name.startsWith(Stem(path)) && (name.endsWith(coming) || name.endsWith(former)))
            found << Beside(path, name);
    return found;
}

}  // namespace zephrin
