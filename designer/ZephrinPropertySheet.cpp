#include "designer/ZephrinPropertySheet.h"

#include "designer/PropertyCatalog.h"
#include "wizard/OleColour.h"

#include <zephrin/Zephrin.h>

#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerPropertyEditorInterface>
#include <QExtensionManager>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace zephrin::designer {

ZephrinPropertySheet::ZephrinPropertySheet(Zephrin& designed, QDesignerPropertySheetExtension& own,
                                           QObject* parent)
    : QObject(parent), control(designed), sheet(own) {
    Arrange();
    const QStringList texts = UntranslatedTexts();
    for (const QString& name : texts) untranslated << sheet.indexOf(name);
    for (const QString& name : {QStringLiteral("ZPBLabelBackColor"), QStringLiteral("ZPBLabelForeColor")}) {
        const int index = sheet.indexOf(name);
        colourDefaults.insert(index, Colour(index));
    }
    const auto depends = [this](const QString& flag, const QString& needed) {
        const int index = sheet.indexOf(flag);
        dependences << Dependence{index, sheet.indexOf(needed), IsTrue(index)};
    };
    depends(QStringLiteral("ZPBAllowJoinCreation"), QStringLiteral("ZPBAllowTableSelection"));
    depends(QStringLiteral("ZPBShowQueryResults"), QStringLiteral("ZPBCreateQueryRecordset"));
}

void ZephrinPropertySheet::Arrange() {
    for (int index = 0; index < sheet.count(); ++index) {
        const QString group = PropertyGroup(sheet.propertyName(index));
        if (!group.isEmpty()) sheet.setPropertyGroup(index, group);
    }
    const int designTime = sheet.indexOf(QStringLiteral("ZPBDesignTime"));
    if (designTime >= 0) sheet.setVisible(designTime, false);
}

QByteArray ZephrinPropertySheet::NameOf(int index) const {
    return sheet.propertyName(index).toLatin1();
}

quint32 ZephrinPropertySheet::Colour(int index) const {
    return control.property(NameOf(index)).toUInt();
}

QVariant ZephrinPropertySheet::property(int index) const {
    if (untranslated.contains(index)) return control.property(NameOf(index)).toString().toUtf8();
    if (!IsColour(index)) return sheet.property(index);
    const quint32 colour = Colour(index);
    if (IsSystemColour(colour) && isChanged(index)) return colour;
    return OleColour(colour, control.palette());
}

void ZephrinPropertySheet::setProperty(int index, const QVariant& value) {
    const QMetaType type = value.metaType();
    const bool isText = type == QMetaType::fromType<QString>() || type == QMetaType::fromType<QByteArray>();
    if (isText && untranslated.contains(index)) {
        // Past Designer's sheet, which keeps texts in a type of its own.
        control.setProperty(NameOf(index), value.toString());
        return;
    }
    const bool isColour = IsColour(index) && type == QMetaType::fromType<QColor>();
    sheet.setProperty(index, isColour ? QVariant(ToOleColour(value.value<QColor>())) : value);
    for (Dependence& dependence : dependences)
        if (dependence.Flag == index) dependence.Wanted = value.toBool();
    Follow(index);
}

void ZephrinPropertySheet::Follow(int index) {
    for (const Dependence& dependence : std::as_const(dependences)) {
        if (dependence.Needed != index) continue;
        sheet.setProperty(dependence.Flag, dependence.Wanted);
        ShowAgain(dependence.Flag);
    }
}

void ZephrinPropertySheet::ShowAgain(int index) const {
    const auto* form = QDesignerFormWindowInterface::findFormWindow(&control);
    QDesignerPropertyEditorInterface* editor = form ? form->core()->propertyEditor() : nullptr;
    if (!editor || editor->object() != &control) return;
    // Later, as the editor is in the middle of what makes this needed.
    QTimer::singleShot(0, this, [this, index, editor = QPointer(editor), designed = QPointer(&control)] {
        if (editor && designed && editor->object() == designed)
            editor->setPropertyValue(sheet.propertyName(index), sheet.property(index), isChanged(index));
    });
}

void ZephrinPropertySheet::setChanged(int index, bool changed) {
    sheet.setChanged(index, changed);
    // Undo gives back the colour that was shown, which for a system colour is not the value.
    if (!changed && IsColour(index)) sheet.setProperty(index, colourDefaults.value(index));
}

bool ZephrinPropertySheet::isEnabled(int index) const {
    const bool needsMore = std::any_of(
        dependences.begin(), dependences.end(),
        [&](const Dependence& dependence) { return dependence.Flag == index && !IsTrue(dependence.Needed); });
    // Designer's editor lets the user try all the same, and is about to be refused.
    if (needsMore) ShowAgain(index);
    return !needsMore && sheet.isEnabled(index);
}

ZephrinPropertySheetFactory::ZephrinPropertySheetFactory(QExtensionManager* manager)
    : QExtensionFactory(manager) {}

QObject* ZephrinPropertySheetFactory::createExtension(QObject* object, const QString& iid,
                                                      QObject* parent) const {
    auto* control = qobject_cast<Zephrin*>(object);
    if (!control || asking || iid != QLatin1StringView(Q_TYPEID(QDesignerPropertySheetExtension)))
        return nullptr;
    const QScopedValueRollback<bool> once(asking, true);
    auto* own = qt_extension<QDesignerPropertySheetExtension*>(extensionManager(), control);
    return own ? new ZephrinPropertySheet(*control, *own, parent) : nullptr;
}

}  // namespace zephrin::designer
