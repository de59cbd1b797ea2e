#include "savedquery/ReadFamily.h"

#include "platform/ado/PersistXml.h"
#include "platform/files/Disk.h"
#include "savedquery/GenerationMark.h"
#include "savedquery/WorkingFiles.h"

#include <zephrin/ado/Error.h>

#include <QFileInfo>
#include <QThread>

namespace zephrin {

namespace {

/// How often files of two saves are read again, and the time between.
constexpr int readings = 12;
constexpr unsigned long pause = 60;

/// A file's rows, and which save they are of.
struct MarkedRows {
    ado::RecordsetPtr Rows;
    QByteArray Mark;
};

std::optional<MarkedRows> ReadRows(const QString& path) {
    try {
        const QByteArray file = files::Read(path, ado::MostPersistedBytes);
        auto rows = std::make_shared<ado::Recordset>();
        rows->OpenXml(file, path);
        return MarkedRows{rows, MarkOf(file)};
    } catch (const files::Failure&) {
        return std::nullopt;
    } catch (const ado::Error&) {
        return std::nullopt;
    }
}

/// The companion of that mark, where a save has put another one in its place and the master is still the
/// former one.
std::optional<MarkedRows> ReadFormer(const QString& path, const QByteArray& mark) {
    for (const QString& former : WorkingFiles(QFileInfo(path).absolutePath()).FormersOf(path))
        if (std::optional<MarkedRows> rows = ReadRows(former); rows && rows->Mark == mark) return rows;
    return std::nullopt;
}

void ReadCompanion(SavedFamily& family, size_t each, const QByteArray& mark) {
    const QString& path = family.Master.Paths[each];
    if (path.isEmpty()) return;
    std::optional<MarkedRows> found = ReadRows(path);
    if (!found || found->Mark != mark)
        if (std::optional<MarkedRows> former = ReadFormer(path, mark)) found = former;
    if (found) family.Rows[each] = found->Rows;
    if (!found)
        family.Lost << QFileInfo(path).fileName();
    else if (found->Mark != mark)
        family.Foreign << QFileInfo(path).fileName();
}

struct Reading {
    SavedFamily Family;
    QByteArray Mark;
};

/// All files as they stand now.
std::optional<Reading> ReadOnce(const QString& path) {
    const std::optional<MarkedRows> master = ReadRows(path);
    if (!master) return std::nullopt;
    std::optional<QueryMaster> values = RowsToMaster(*master->Rows);
    if (!values) return std::nullopt;
    Reading reading{{std::move(*values), {}, {}, {}}, master->Mark};
    for (size_t each = 0; each < CompanionCount; ++each) ReadCompanion(reading.Family, each, reading.Mark);
    return reading;
}

/// A companion may be gone, or be another one, because the master has become another one in the meantime.
bool IsOutOfDate(const Reading& reading, const QString& path) {
    if (!reading.Family.Foreign.isEmpty()) return true;
    if (reading.Family.Lost.isEmpty()) return false;
    const std::optional<MarkedRows> master = ReadRows(path);
    return master && master->Mark != reading.Mark;
}

}  // namespace

std::optional<SavedFamily> ReadFamily(const QString& path) {
    for (int left = readings;; --left) {
        std::optional<Reading> reading = ReadOnce(path);
        if (!reading) return std::nullopt;
        if (left == 1 || !IsOutOfDate(*reading, path)) return std::move(reading->Family);
        QThread::msleep(pause);
    }
}

}  // namespace zephrin
