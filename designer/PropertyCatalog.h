#pragma once

#include <QString>
#include <QStringList>

namespace zephrin::designer {

/// The heading under which the property editor shows a property of the control; empty for what is not the
/// control's own.
QString PropertyGroup(const QString& property);

/// Texts of the control that no translator should see, by the names of their properties.
QStringList UntranslatedTexts();

/// What Designer puts on a form for a new control, with the tool tips of its properties.
QString FormDescription(const QString& className, const QString& objectName);

}  // namespace zephrin::designer
