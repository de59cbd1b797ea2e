#include "platform/ado/providers/files/FileCache.h"

#include <QThread>

namespace zephrin::ado::files {

std::shared_ptr<FileDatabase> FileCache::Open(const FileTarget& target, const Patience& patience) {
    const void* const thread = QThread::currentThreadId();
    {
        const QMutexLocker lock(&mutex);
        std::erase_if(entries, [](const Entry& entry) { return entry.Database.expired(); });
        // What was measured already is right for everybody.
        FileTarget measured = target;
        measured.MeasureSheets = true;
        for (const Entry& entry : entries)
            if (entry.Thread == thread && (entry.Target == target || entry.Target == measured))
                if (std::shared_ptr<FileDatabase> open = entry.Database.lock(); open && open->IsCurrent())
                    return open;
    }
    auto opened = std::make_shared<FileDatabase>(target, patience);
    const QMutexLocker lock(&mutex);
    entries.push_back({target, thread, opened});
    return opened;
}

}  // namespace zephrin::ado::files
