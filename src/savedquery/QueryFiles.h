#pragma once

#include <zephrin/ado/Recordset.h>

#include <QString>

#include <vector>

namespace zephrin {

/// What saving and opening do on the disk. It keeps nothing; each of its steps can be made to fail by a class
/// of a test.
class QueryFiles {
 public:
    virtual ~QueryFiles() = default;

    /// Each throws ado::Error when it fails; what was there before a failed one stays.
    virtual void Save(const ado::Recordset& rows, const QString& path, ado::Recordset::FileAccess access);
    virtual void Open(ado::Recordset& rows, const QString& path);
    /// Takes the place of a file that stands at `to`.
    virtual void Rename(const QString& from, const QString& to);
    /// A file that is not there is no failure.
    virtual void Remove(const QString& path);
    virtual bool Exists(const QString& path);
};

/// One file of a family that is replaced as a whole.
struct FamilyFile {
    QString Path;
    /// What it holds from now on; null for a file that goes.
    ado::RecordsetPtr Rows;
    ado::Recordset::FileAccess Access = ado::Recordset::FileAccess::Usual;
};

/// Replaces all files or none: the new ones are written beside the old ones first, then take their places;
/// where one can't, those that already did give theirs back. Throws ado::Error with the first failure.
void ReplaceFamily(QueryFiles& files, const std::vector<FamilyFile>& family);

}  // namespace zephrin
