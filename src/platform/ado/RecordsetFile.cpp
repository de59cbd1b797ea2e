#include "platform/ado/PersistXml.h"
#include "platform/ado/RecordsetPrivate.h"

#include <zephrin/ado/Error.h>
#include <zephrin/ado/Recordset.h>

#include <QFileInfo>
#include <QSaveFile>

namespace zephrin::ado {

namespace {

Error Unwritable(const QSaveFile& file) {
    return Error(ErrorNumber::WriteFile, QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
}

Error Unreadable(const QString& path, const QString& why) {
    return Error(ErrorNumber::InvalidConnection, QStringLiteral("%1: %2").arg(path, why));
}

}  // namespace

void Recordset::Save(const QString& path, FileAccess access) const {
    const QByteArray xml = ToXml();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) throw Unwritable(file);
    // Before the first byte is in it.
    const bool narrowed =
        access == FileAccess::Usual || file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    if (!narrowed || file.write(xml) != xml.size() || !file.commit()) throw Unwritable(file);
}

void Recordset::OpenFile(const QString& path) {
    d->RequireClosed();
    // A pipe or a device would be read for ever.
    if (!QFileInfo(path).isFile()) throw Unreadable(path, QStringLiteral("The file cannot be found."));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw Unreadable(path, file.errorString());
    const QByteArray xml = file.read(MostPersistedBytes + 1);
    if (file.error() != QFile::NoError) throw Unreadable(path, file.errorString());
    OpenXml(xml, path);
}

QByteArray Recordset::ToXml() const {
    d->RequireOpen();
    return WritePersisted(d->fields, *d->rows);
}

void Recordset::OpenXml(const QByteArray& xml, const QString& name) {
    d->RequireClosed();
    PersistedTable table = ReadPersisted(xml, name);
    EditedRows* const edited = table.Rows.get();
    d->truncated = false;
    d->Show(std::move(table.Fields), std::move(table.Rows), edited);
}

}  // namespace zephrin::ado
