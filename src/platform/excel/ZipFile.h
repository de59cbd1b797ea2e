#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct zip;

namespace zephrin::excel {

/// Hands out the bytes of an entry piece by piece; an empty piece is the end. It may throw ado::Error.
using PieceReader = std::function<QByteArray()>;

/// One zip archive that is added to. Nothing is written before Commit; an archive that is dropped without it
/// leaves the file as it was.
class ZipFile {
 public:
    enum class Begin { Afresh, WithWhatIsThere };
    /// Opens the archive at `path`, or begins one there. Throws ado::Error.
    ZipFile(const QString& path, Begin begin);
    ~ZipFile();

    void Add(const QByteArray& name, const QByteArray& content);
    /// `start` is called when the entry is written (and again, should it be read twice).
    void AddStreamed(const QByteArray& name, std::function<PieceReader()> start);
    /// Writes the archive. Throws what a reader threw, or ado::Error for a full disk and the like.
    void Commit();

 private:
    struct Stream;
    struct Discard {
        void operator()(struct zip* archive) const;
    };
    void AddSource(const QByteArray& name, void* source);

    std::unique_ptr<struct zip, Discard> archive;
    /// What the streamed entries read from while the archive is written.
    std::vector<std::unique_ptr<Stream>> streams;
    /// Contents of entries; they are read when the archive is written.
    std::vector<std::unique_ptr<QByteArray>> contents;
};

}  // namespace zephrin::excel
