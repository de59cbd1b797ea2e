#include "platform/ado/PersistXml.h"
#include "platform/ado/RecordsetPrivate.h"
#include "platform/files/Disk.h"

#include <zephrin/ado/Error.h>
#include <zephrin/ado/Recordset.h>

namespace zephrin::ado {

void Recordset::Save(const QString& path, FileAccess access) const {
    try {
        files::Replace(path, ToXml(),
                       access == FileAccess::Usual ? files::Access::Usual : files::Access::OwnerOnly);
    } catch (const files::Failure& failure) {
        throw Error(ErrorNumber::WriteFile, failure.Text());
    }
}

void Recordset::OpenFile(const QString& path) {
    d->RequireClosed();
    try {
        OpenXml(files::Read(path, MostPersistedBytes), path);
    } catch (const files::Failure& failure) {
        throw Error(ErrorNumber::InvalidConnection, failure.Text());
    }
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
