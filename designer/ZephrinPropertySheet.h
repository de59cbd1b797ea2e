#pragma once

#include <QDesignerPropertySheetExtension>
#include <QExtensionFactory>
#include <QList>
#include <QMap>
#include <QObject>
#include <QVariant>

namespace zephrin {
class Zephrin;
}

namespace zephrin::designer {

/// The properties of a control as the property editor shows them and the form stores them: Designer's own
/// sheet of the control, asked for everything, and on top of it what Designer cannot know.
///
/// - The two OLE colours are colours. The default system colour is shown by its role in the palette; one that
///   a form sets is shown as its number: as a colour it would be stored as a plain one.
/// - A flag that needs another one cannot be set without it, and has its value again when that comes back.
/// - A connection string and the like are plain bytes: a text would be offered to translators, and set again
///   whenever the language changes.
class ZephrinPropertySheet : public QObject, public QDesignerPropertySheetExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerPropertySheetExtension)

 public:
    /// `own` is Designer's sheet of the control, which lives as long as this one is asked.
    ZephrinPropertySheet(Zephrin& control, QDesignerPropertySheetExtension& own, QObject* parent);

    int count() const override { return sheet.count(); }
    int indexOf(const QString& name) const override { return sheet.indexOf(name); }
    QString propertyName(int index) const override { return sheet.propertyName(index); }
    QString propertyGroup(int index) const override { return sheet.propertyGroup(index); }
    void setPropertyGroup(int index, const QString& group) override { sheet.setPropertyGroup(index, group); }
    bool hasReset(int index) const override { return sheet.hasReset(index); }
    bool reset(int index) override { return sheet.reset(index); }
    bool isVisible(int index) const override { return sheet.isVisible(index); }
    void setVisible(int index, bool visible) override { sheet.setVisible(index, visible); }
    bool isAttribute(int index) const override { return sheet.isAttribute(index); }
    void setAttribute(int index, bool attribute) override { sheet.setAttribute(index, attribute); }
    QVariant property(int index) const override;
    void setProperty(int index, const QVariant& value) override;
    bool isChanged(int index) const override { return sheet.isChanged(index); }
    void setChanged(int index, bool changed) override;
    bool isEnabled(int index) const override;

 private:
    struct Dependence {
        int Flag = -1;
        int Needed = -1;
        /// What the form says of the flag, which is False as long as the needed one is.
        bool Wanted = true;
    };

    /// Groups the properties, and hides what only the editor needs.
    void Arrange();
    QByteArray NameOf(int index) const;
    bool IsColour(int index) const { return colourDefaults.contains(index); }
    bool IsTrue(int index) const { return sheet.property(index).toBool(); }
    /// Gives the flags that need the one at `index` their values again, now that it has changed.
    void Follow(int index);
    /// Has the property editor show what the flag at `index` is.
    void ShowAgain(int index) const;
    /// The OLE colour, whatever way it is shown.
    quint32 Colour(int index) const;

    Zephrin& control;
    QDesignerPropertySheetExtension& sheet;
    QMap<int, quint32> colourDefaults;
    QList<Dependence> dependences;
    QList<int> untranslated;
};

/// Puts a ZephrinPropertySheet over the sheet that Designer makes for a control.
class ZephrinPropertySheetFactory : public QExtensionFactory {
    Q_OBJECT

 public:
    explicit ZephrinPropertySheetFactory(QExtensionManager* manager);

 protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;

 private:
    /// Designer's sheet is asked for through the same manager, which then comes by here once more.
    mutable bool asking = false;
};

}  // namespace zephrin::designer
