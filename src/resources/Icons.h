#pragma once

#include <QString>
#include <QStringList>

namespace zephrin::resources {

/// Makes the icons readable under ":/zephrin/icons". Call it before the first look-up: this room is a static
/// library, whose resources nobody registers by themselves. Calling it again does nothing.
void InitResources();

/// Path of the icon `name` ("arrow-right"); for the names see IconNames.
QString IconPath(const QString& name);

/// Every icon. All but "zephrin", which has colours of its own, are drawn in the one colour "currentColor":
/// replace it in the file's text before rendering.
QStringList IconNames();

}  // namespace zephrin::resources
