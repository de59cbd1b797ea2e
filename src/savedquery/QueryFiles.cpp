#include "savedquery/QueryFiles.h"

#include <zephrin/ado/Error.h>

#include <QDir>
#include <QFile>

#include <filesystem>
#include <system_error>

namespace zephrin {

namespace {

[[noreturn]] void Fail(const QString& path, const QString& reason) {
    throw ado::Error(ado::ErrorNumber::ProviderFailed,
                     QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), reason));
}

/// The name as Qt gives it to the system. The library's own conversion throws on half a surrogate pair.
std::filesystem::path Native(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString Fresh(const FamilyFile& file) {
    return file.Path + QStringLiteral(".new");
}
QString Aside(const FamilyFile& file) {
    return file.Path + QStringLiteral(".old");
}

/// Runs a step of tidying up, whose failure must not hide what made it necessary.
template <class Step>
void Attempt(Step step) {
    try {
        step();
    } catch (const ado::Error&) {
        // A file that could not be tidied up stays beside the family and harms nobody.
    }
}

/// The files that change places, and the way back.
class Exchange {
 public:
    explicit Exchange(QueryFiles& queryFiles) : files(queryFiles) {}

    void Take(const FamilyFile& file) {
        if (files.Exists(file.Path)) {
            files.Rename(file.Path, Aside(file));
            moved.push_back(&file);
        }
        if (!file.Rows) return;
        files.Rename(Fresh(file), file.Path);
        placed.push_back(&file);
    }

    void GiveBack() {
        for (const FamilyFile* file : placed) Attempt([&] { files.Remove(file->Path); });
        for (const FamilyFile* file : moved) Attempt([&] { files.Rename(Aside(*file), file->Path); });
    }

    void ForgetOld() {
        for (const FamilyFile* file : moved) Attempt([&] { files.Remove(Aside(*file)); });
    }

 private:
    QueryFiles& files;
    std::vector<const FamilyFile*> moved, placed;
};

void RemoveFresh(QueryFiles& files, const std::vector<FamilyFile>& family) {
    for (const FamilyFile& file : family) Attempt([&] { files.Remove(Fresh(file)); });
}

}  // namespace

void QueryFiles::Save(const ado::Recordset& rows, const QString& path, ado::Recordset::FileAccess access) {
    rows.Save(path, access);
}

void QueryFiles::Open(ado::Recordset& rows, const QString& path) {
    rows.OpenFile(path);
}

void QueryFiles::Rename(const QString& from, const QString& to) {
    std::error_code error;
    std::filesystem::rename(Native(from), Native(to), error);
    if (error) Fail(to, QString::fromStdString(error.message()));
}

void QueryFiles::Remove(const QString& path) {
    std::error_code error;
    std::filesystem::remove(Native(path), error);
    if (error) Fail(path, QString::fromStdString(error.message()));
}

bool QueryFiles::Exists(const QString& path) {
    return QFile::exists(path);
}

void ReplaceFamily(QueryFiles& files, const std::vector<FamilyFile>& family) {
    Exchange exchange(files);
    try {
        for (const FamilyFile& file : family)
            if (file.Rows) files.Save(*file.Rows, Fresh(file), file.Access);
        for (const FamilyFile& file : family) exchange.Take(file);
    } catch (const ado::Error&) {
        exchange.GiveBack();
        RemoveFresh(files, family);
        throw;
    }
    exchange.ForgetOld();
}

}  // namespace zephrin
