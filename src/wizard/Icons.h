#pragma once

#include <QIcon>

class QAbstractButton;

namespace zephrin {

/// The line drawing `name` of the resources, painted in the colour that the application's palette has for the
/// texts of buttons: it follows a change between light and dark, and is sharp at any scale. Null when there
/// is none.
QIcon LineIcon(const QString& name);

/// Puts the icon `name` on `button`, or `text` where there is no such icon. A button without a caption gets
/// no room for one.
void SetFace(QAbstractButton* button, const QString& name, const QString& text = {});

}  // namespace zephrin
