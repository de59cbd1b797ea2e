#pragma once

#include "platform/ado/providers/files/FileDatabase.h"

#include <QMutex>

#include <memory>
#include <vector>

namespace zephrin::ado::files {

/// The files that connections of one provider have open. The wizard opens a connection of its own for many a
/// small question: they find here what has been read already, for as long as somebody keeps the file open.
class FileCache {
 public:
    std::shared_ptr<FileDatabase> Open(const FileTarget& target, const Patience& patience);

 private:
    struct Entry {
        FileTarget Target;
        const void* Thread;  ///< the engine is used from one thread
        std::weak_ptr<FileDatabase> Database;
    };
    QMutex mutex;
    std::vector<Entry> entries;
};

}  // namespace zephrin::ado::files
