#include "platform/ado/providers/files/FilesProvider.h"

#include "platform/ado/providers/files/FilesSession.h"

#include <algorithm>

namespace zephrin::ado::providers {

FilesProvider::FilesProvider(std::function<QStringList()> installed)
    : drivers(std::move(installed)), cache(std::make_shared<files::FileCache>()) {}

bool FilesProvider::Accepts(const QString& connectionString) const {
    const files::NamedDriver wanted = files::DriverOf(connectionString);
    if (wanted.Name.isEmpty()) return false;
    const QStringList names = drivers();
    return std::none_of(names.begin(), names.end(), [&](const QString& name) {
        return wanted.IsWhole ? name.compare(wanted.Name, Qt::CaseInsensitive) == 0
                              : name.startsWith(wanted.Name, Qt::CaseInsensitive);
    });
}

std::unique_ptr<Session> FilesProvider::Open(const OpenRequest& request) const {
    return std::make_unique<files::FilesSession>(cache, request);
}

}  // namespace zephrin::ado::providers
