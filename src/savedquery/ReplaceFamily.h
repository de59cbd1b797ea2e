#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace zephrin {

/// One file of a family that is replaced as a whole.
struct FamilyFile {
    QString Path;
    /// What it holds from now on; nothing for a file that goes.
    std::optional<QByteArray> Xml;
};

/// Replaces all files of a query or none; the last one is its master. Throws files::Failure with the first
/// failure.
///
/// Whenever the program ends on the way, a query is there whole, in these steps:
/// 1. Nobody else replaces files of that folder (files::FolderTurn), and what a save has left that came to no
/// end is put right.
/// 2. The new files are written under fresh names, the former ones get second names. All of it is on the
/// disk.
/// 3. The new companions take their places. Until the master follows, it is the former query, whose
/// companions are found under
///    their second names, by the mark that they share with it (ReadFamily).
/// 4. The master takes its place: from now on it is the new query.
/// 5. The second names go, and the companions that the query no longer has.
void ReplaceFamily(const std::vector<FamilyFile>& family);

/// Removes the master of a query, its companions, and what was left of saves that came to no end. Goes on
/// past a failure, and throws the first; a master that stays keeps its companions.
void RemoveFamily(const std::vector<QString>& companions, const QString& master);

}  // namespace zephrin
