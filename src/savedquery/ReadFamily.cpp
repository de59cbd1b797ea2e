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

struct Reading {
    SavedFamily Family;
    QByteArray Mark;
    /// Whether all is there, and of one save.
    bool Whole = true;
};

/// A file without a mark was written by somebody else than a save, and may belong to any.
bool AreOfTwoSaves(const QByteArray& mark, const QByteArray& other) {
    return mark != other && !mark.isEmpty() && !other.isEmpty();
}

void ReadCompanion(Reading& reading, size_t each) {
    const QString& path = reading.Family.Master.Paths[each];
    if (path.isEmpty()) return;
    std::optional<MarkedRows> found = ReadRows(path);
    if (!found || found->Mark != reading.Mark)
        if (std::optional<MarkedRows> former = ReadFormer(path, reading.Mark)) found = former;
    if (!found)
        reading.Family.Lost << QFileInfo(path).fileName();
    else if (AreOfTwoSaves(found->Mark, reading.Mark))
        reading.Family.Foreign << QFileInfo(path).fileName();
    reading.Whole = reading.Whole && found && found->Mark == reading.Mark;
    if (found) reading.Family.Rows[each] = found->Rows;
}

/// All files as they stand now.
std::optional<Reading> ReadOnce(const QString& path, const std::function<void(size_t)>& goOn) {
    const std::optional<MarkedRows> master = ReadRows(path);
    if (!master) return std::nullopt;
    std::optional<QueryMaster> values = RowsToMaster(*master->Rows);
    if (!values) return std::nullopt;
    Reading reading{{std::move(*values), {}, {}, {}}, master->Mark};
    for (size_t each = 0; each < CompanionCount; ++each) {
        if (goOn) goOn(each + 1);
        ReadCompanion(reading, each);
    }
    return reading;
}

/// What isn't whole may be so because the query has become another one in the meantime.
bool IsOutOfDate(const Reading& reading, const QString& path) {
    if (reading.Whole) return false;
    if (!reading.Family.Foreign.isEmpty()) return true;
    const std::optional<MarkedRows> master = ReadRows(path);
    return master && master->Mark != reading.Mark;
}

}  // namespace

std::optional<SavedFamily> ReadFamily(const QString& path, const std::function<void(size_t)>& goOn) {
    for (int left = readings;; --left) {
        std::optional<Reading> reading = ReadOnce(path, goOn);
        if (!reading) return std::nullopt;
        if (left == 1 || !IsOutOfDate(*reading, path)) return std::move(reading->Family);
        QThread::msleep(pause);
    }
}

}  // namespace zephrin
