#pragma once

#include "platform/ado/providers/files/Conversation.h"
#include "platform/ado/providers/sqlite/SqliteSession.h"

#include <QHash>
#include <QSet>

namespace zephrin::ado::files {

/// How a file was when it was looked at: another one, or a changed one, differs in some of it.
struct FileStamp {
    quint64 Device = 0;
    quint64 Node = 0;
    qint64 Size = -1;
    qint64 Changed = 0;

    bool operator==(const FileStamp&) const = default;
    /// Of the file as it is now; Size is -1 where there is none.
    static FileStamp Of(const QString& path);
};

/// Thrown where the file changed while it was read.
struct FileChanged {};

/// A file as it was at one moment: its catalogue, and a private database of the embedded engine that its
/// tables go into when a statement first reads them. The statements are the engine's business.
class FileDatabase final : public providers::sqlite::TableSource {
 public:
    /// Reads the catalogue; throws ado::Error.
    FileDatabase(const FileTarget& target, const Patience& patience);

    bool IsCurrent() const { return FileStamp::Of(file.Path) == stamp; }
    providers::sqlite::SqliteSession& Engine() { return *engine; }

    /// The tables on offer, in the columns of a schema.
    std::unique_ptr<Cursor> Tables();
    std::unique_ptr<Cursor> Columns(const QString& table);

    void Declare(const QString& name) override;
    void Fill(const QList<QString>& tables, providers::sqlite::Deadline& deadline) override;

    /// Who waits, and how long, for the time of one call. Nobody else is let in meanwhile: the engine is one
    /// for all who have the file open.
    class Waiting {
     public:
        Waiting(FileDatabase& of, const Patience& patience, const std::shared_ptr<Watch>& watch);
        ~Waiting() { database.waiting = nullptr; }
        Waiting(const Waiting&) = delete;
        Waiting& operator=(const Waiting&) = delete;

     private:
        FileDatabase& database;
    };

 private:
    struct Known {
        FileTable Table;
        bool IsDeclared = false;
        bool IsFilled = false;
        bool IsBeingDeclared = false;
    };

    Request RequestFor(Operation operation, const Known& table) const;
    void OpenEngine();
    void ReadColumns(Known& table);
    QHash<QString, Known>::iterator FindArea(const QString& name);
    void DeclareTable(Known& table);
    void DeclareView(Known& view);
    bool CanRun(Known& view);
    void Import(Known& table, const Patience& patience);
    void ImportRows(Known& table, Conversation& conversation);
    void LeaveRoom() const;
    [[noreturn]] void ThrowEngine(int code, const QString& table) const;
    void CheckUnchanged() const;
    void LookAround() const;

    FileTarget file;
    FileStamp stamp;
    QString folder;
    std::unique_ptr<providers::sqlite::SqliteSession> engine;
    /// By folded name.
    QHash<QString, Known> tables;
    QStringList order;
    Patience waiting;
};

}  // namespace zephrin::ado::files
