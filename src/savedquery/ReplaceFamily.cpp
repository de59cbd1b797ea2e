#include "savedquery/ReplaceFamily.h"

#include "platform/ado/PersistXml.h"
#include "platform/files/Disk.h"
#include "platform/files/FolderTurn.h"
#include "savedquery/GenerationMark.h"
#include "savedquery/WorkingFiles.h"

#include <QFileInfo>

#include <functional>

namespace zephrin {

namespace {

/// Runs a step of tidying up, whose failure must not hide what made it necessary; whether it succeeded.
bool Attempt(const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const files::Failure&) {
        // What could not be tidied up harms nobody, and goes at the next save.
        return false;
    }
}

QString FolderOf(const QString& path) {
    return QFileInfo(path).absolutePath();
}

/// The mark of a file, or nothing where it can't be read.
std::optional<QByteArray> ReadMark(const QString& path) {
    try {
        return MarkOf(files::Read(path, ado::MostPersistedBytes));
    } catch (const files::Failure&) {
        return std::nullopt;
    }
}

/// Gives a companion back that belongs to the master, where a save came to no end between the two.
void PutRight(const QString& companion, const QByteArray& masterMark, const QStringList& formers) {
    if (formers.isEmpty() || ReadMark(companion) == masterMark) return;
    for (const QString& former : formers) {
        if (ReadMark(former) != masterMark) continue;
        files::Rename(former, companion);
        return;
    }
}

/// They hold what the query held, its password too.
void RemoveLeftOvers(const WorkingFiles& working, const QString& path) {
    for (const QString& each : working.AllOf(path)) Attempt([&] { files::Remove(each); });
}

/// Only for who has the turn: what is left over may be at work otherwise.
void PutRightFamily(const std::vector<FamilyFile>& family) {
    const QString& master = family.back().Path;
    const WorkingFiles working(FolderOf(master));
    if (const std::optional<QByteArray> mark = ReadMark(master))
        for (const FamilyFile& file : family)
            if (file.Path != master) PutRight(file.Path, *mark, working.FormersOf(file.Path));
    for (const FamilyFile& file : family) RemoveLeftOvers(working, file.Path);
}

/// A file that its owner has protected is not to be replaced.
void RequireWritable(const QString& path) {
    const QFileInfo file(path);
    if (file.exists() && !file.isWritable())
        throw files::Failure{path, QStringLiteral("The file is write-protected.")};
}

/// One save, from the first file that is written to the last that goes, and the way back.
class Replacement {
 public:
    explicit Replacement(const std::vector<FamilyFile>& files) {
        for (const FamilyFile& each : files) family.push_back({&each});
    }

    void Run() {
        try {
            Prepare();
            PlaceAll();
        } catch (const files::Failure&) {
            GiveBack();
            throw;
        }
        Finish();
    }

 private:
    struct Step {
        const FamilyFile* File;
        bool Kept = false, Placed = false;
    };

    QString Folder() const { return FolderOf(family.back().File->Path); }
    QString Coming(const Step& step) const { return ComingFile(step.File->Path, mark); }
    QString Former(const Step& step) const { return FormerFile(step.File->Path, mark); }

    void Prepare() {
        for (const Step& step : family) RequireWritable(step.File->Path);
        for (const Step& step : family)
            if (step.File->Xml) files::WriteNew(Coming(step), WithMark(*step.File->Xml, mark));
        for (Step& step : family) {
            if (!step.File->Xml || !QFileInfo::exists(step.File->Path)) continue;
            files::Keep(step.File->Path, Former(step));
            step.Kept = true;
        }
        files::SyncFolder(Folder());
    }

    void PlaceAll() {
        for (Step& step : family) {
            const bool isMaster = &step == &family.back();
            // The companions are on the disk before the master that names them.
            if (isMaster) files::SyncFolder(Folder());
            if (!step.File->Xml) continue;
            files::Rename(Coming(step), step.File->Path);
            step.Placed = true;
        }
        files::SyncFolder(Folder());
    }

    /// The master first: as long as it is the new one, its companions are the new ones.
    void GiveBack() {
        for (auto step = family.rbegin(); step != family.rend(); ++step) {
            if (!step->Placed) {
                Attempt([&] { files::Remove(Coming(*step)); });
                if (step->Kept) Attempt([&] { files::Remove(Former(*step)); });
                continue;
            }
            const bool isBack = Attempt([&] {
                if (step->Kept)
                    files::Rename(Former(*step), step->File->Path);
                else
                    files::Remove(step->File->Path);
            });
            if (!isBack && step == family.rbegin()) return;
        }
    }

    void Finish() {
        for (const Step& step : family) {
            if (!step.File->Xml) Attempt([&] { files::Remove(step.File->Path); });
            if (step.Kept) Attempt([&] { files::Remove(Former(step)); });
        }
    }

    std::vector<Step> family;
    const QByteArray mark = NewMark();
};

}  // namespace

void ReplaceFamily(const std::vector<FamilyFile>& family) {
    const files::FolderTurn turn(FolderOf(family.back().Path));
    if (turn.IsHeld()) PutRightFamily(family);
    Replacement(family).Run();
}

void RemoveFamily(const std::vector<QString>& companions, const QString& master) {
    const files::FolderTurn turn(FolderOf(master));
    files::Remove(master);
    std::optional<files::Failure> first;
    for (const QString& companion : companions) {
        try {
            files::Remove(companion);
        } catch (const files::Failure& failure) {
            if (!first) first = failure;
        }
    }
    if (turn.IsHeld()) {
        const WorkingFiles working(FolderOf(master));
        RemoveLeftOvers(working, master);
        for (const QString& companion : companions) RemoveLeftOvers(working, companion);
    }
    if (first) throw files::Failure(*first);
}

}  // namespace zephrin
