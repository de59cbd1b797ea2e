#include "SampleData.h"

#include <zephrin/ado/Error.h>
#include <zephrin/ado/Recordset.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace demo {

namespace {

const QString databaseName = QStringLiteral("shop.db");
const QString workbookName = QStringLiteral("shop.xlsx");
const QString queriesName = QStringLiteral("queries");

/// A copy is there whole or not at all, also when the disk is full; half a database would be taken for one at
/// the next start.
bool CopyMissing(const QString& from, const QString& to) {
    if (QFile::exists(to)) return true;
    QFile source(from);
    QSaveFile copy(to);
    if (!source.open(QIODevice::ReadOnly) || !copy.open(QIODevice::WriteOnly) ||
        !copy.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return false;
    while (!source.atEnd()) {
        const QByteArray piece = source.read(1 << 20);
        if (piece.isEmpty() || copy.write(piece) != piece.size()) return false;
    }
    // What stands in a buffer is written by commit() too, which doesn't say whether it could.
    return copy.flush() && copy.commit();
}

/// A saved query names its companions and its database by their full paths: these become the ones of the
/// copy.
void CopyMaster(const QString& from, const QDir& folder, const QString& database) {
    zephrin::ado::Recordset master;
    master.OpenFile(from);
    for (int field = 0; field < master.FieldCount(); ++field) {
        const QString text = master.Text(field);
        if (text.endsWith(QLatin1StringView(".dat")))
            master.SetValue(field, folder.filePath(QFileInfo(text).fileName()));
    }
    const QString connection = master.Text(u"ConnectionString");
    master.SetValue(u"ConnectionString", connection.section(u'=', 0, -2) + u'=' + database);
    master.Update();
    master.Save(folder.filePath(QFileInfo(from).fileName()), zephrin::ado::Recordset::FileAccess::OwnerOnly);
}

/// The master of a query comes last, so that there is none without its companions.
void CopyQueries(const QDir& from, const QDir& to, const QString& database) {
    for (const QFileInfo& file : from.entryInfoList({QStringLiteral("*.dat")}, QDir::Files)) {
        const QString copy = to.filePath(file.fileName());
        if (!CopyMissing(file.filePath(), copy))
            throw zephrin::ado::Error(zephrin::ado::ErrorNumber::WriteFile,
                                      copy + QStringLiteral(" can not be written"));
    }
    for (const QFileInfo& file : from.entryInfoList({QStringLiteral("*.zpb")}, QDir::Files))
        if (!to.exists(file.fileName())) CopyMaster(file.filePath(), to, database);
}

}  // namespace

SampleData CopySamples(const QDir& user, const QDir& installed) {
    // A workbook is only read, so that nobody needs one of their own.
    const QString workbook = installed.filePath(workbookName);
    SampleData data{user.filePath(databaseName), user.filePath(queriesName), workbook};
    if (!user.mkpath(queriesName) || !CopyMissing(installed.filePath(databaseName), data.Database))
        return {installed.filePath(databaseName), {}, workbook};
    try {
        CopyQueries(installed.filePath(queriesName), data.Queries, data.Database);
    } catch (const zephrin::ado::Error& error) {
        qWarning("The sample queries are not complete: %s", error.what());
    }
    return data;
}

SampleData FindSampleData() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QDir installed(program.filePath(QStringLiteral("../share/zephrin-demo")));
    if (installed.exists(databaseName))
        return CopySamples(QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)),
                           installed);
    return {QDir::cleanPath(program.filePath(QStringLiteral("../shop/") + databaseName)),
            QDir::cleanPath(program.filePath(QStringLiteral("../") + queriesName)),
            QDir::cleanPath(program.filePath(QStringLiteral("../shop/") + workbookName))};
}

}  // namespace demo
