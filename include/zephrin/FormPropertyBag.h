#pragma once

#include <zephrin/PropertyBag.h>

#include <memory>

namespace zephrin {

/// A property bag in a form of Qt Designer: the properties of one widget of a `.ui` file, in the notation
/// that Designer, uic and QUiLoader read.
///
///     FormPropertyBag bag(QStringLiteral("mainwindow.ui"), QStringLiteral("queryBuilder"));
///     control.ReadProperties(bag);
///     control.SetZPBModalForm(true);
///     control.WriteProperties(bag);
///     bag.Save();
///
/// Everything else in the file stays as it stands, character by character: the other widgets, connections,
/// comments, what this program knows nothing of. Nothing reaches the disk before Save.
///
/// An icon is kept in a form as the name of a theme's icon or of files. One that was drawn or loaded by a
/// program has no such name: then the form's own icon stays. A font is kept in whole points.
class ZEPHRIN_EXPORT FormPropertyBag : public PropertyBag {
 public:
    /// Reads `path`. Throws ado::Error when that cannot be read, is no sound form in UTF-8, or has no widget
    /// of that name.
    FormPropertyBag(const QString& path, const QString& objectName);
    ~FormPropertyBag() override;

    QVariant ReadProperty(const QString& name, const QVariant& defaultValue) const override;
    /// Throws ado::Error for a text with characters that no form can hold, and for a value of a kind that
    /// forms do not know; the form then stays as it was.
    void WriteProperty(const QString& name, const QVariant& value) override;

    /// Puts the form in the place of the file, whole or not at all. Throws ado::Error when it cannot be
    /// written, or when somebody else has changed the file since it was read. Does nothing when nothing was
    /// changed.
    void Save();

 private:
    class Private;
    std::unique_ptr<Private> d;
};

}  // namespace zephrin
