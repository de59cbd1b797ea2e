#include "resources/Icons.h"

#include <QDir>

// The macro declares a function at namespace scope, so it may not stand inside a namespace.
static void RegisterIcons() {
    Q_INIT_RESOURCE(zephrin);
}

namespace zephrin::resources {

namespace {

constexpr QLatin1String folder(":/zephrin/icons/");
constexpr QLatin1String suffix(".svg");

}  // namespace

void InitResources() {
    RegisterIcons();
}

QString IconPath(const QString& name) {
    return folder + name + suffix;
}

QStringList IconNames() {
    InitResources();
    QStringList names = QDir(folder).entryList({QLatin1Char('*') + suffix}, QDir::Files, QDir::Name);
    for (QString& name : names) name.chop(suffix.size());
    return names;
}

}  // namespace zephrin::resources
