#include "control/FormDocument.h"
#include "control/FormValue.h"
#include "platform/files/Disk.h"
#include "wizard/OleColour.h"

#include <zephrin/FormPropertyBag.h>
#include <zephrin/Zephrin.h>
#include <zephrin/ado/Error.h>

#include <QFileInfo>
#include <QMetaProperty>
#include <QStringDecoder>

namespace zephrin {

namespace {

constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");

ado::Error Failure(int number, const QString& path, const QString& why) {
    return ado::Error(number, QStringLiteral("%1: %2").arg(path, why), QStringLiteral("Zephrin"));
}

/// No form is as long as that, and no program lives that reads more.
constexpr qint64 MostBytes = 256 << 20;

QByteArray ReadFile(const QString& path) {
    try {
        return files::Read(path, MostBytes);
    } catch (const files::Failure& failure) {
        throw Failure(ado::ErrorNumber::InvalidConnection, path, failure.Reason);
    }
}

QString Decode(QByteArrayView bytes, const QString& path) {
    if (bytes.startsWith(byteOrderMark)) bytes = bytes.sliced(byteOrderMark.size());
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decode(bytes);
    if (decode.hasError())
        throw Failure(ado::ErrorNumber::InvalidArgument, path, QStringLiteral("The form is not in UTF-8."));
    return text;
}

/// The type of a property of the control; that of `value` for a property of somebody else's.
int TypeOf(const QString& name, const QVariant& value) {
    const QMetaObject& meta = Zephrin::staticMetaObject;
    const int index = meta.indexOfProperty(name.toLatin1().constData());
    return index < 0 ? value.typeId() : meta.property(index).typeId();
}

/// The value as Designer would have it: a flag and a colour come as numbers, and it knows types for both.
QVariant ForDesigner(const QString& name, const QVariant& value) {
    const int type = TypeOf(name, value);
    if (type == QMetaType::Bool) return value.toBool();
    const bool isColour = type == QMetaType::UInt && value.typeId() == QMetaType::UInt;
    // Colours of the desktop, and other numbers with something in the top byte, are no colours to Designer.
    if (isColour && value.toUInt() <= 0xFFFFFFU) return OleColour(value.toUInt(), {});
    return value;
}

/// A program is translated by its caption, and by no word of a connection or of a format.
bool IsTranslatable(const QString& name) {
    return name == QLatin1StringView("ZPBRunTimeControlCaption");
}

}  // namespace

class Q_DECL_HIDDEN FormPropertyBag::Private {
 public:
    Private(const QString& formPath, const QString& objectName)
        : path(formPath), bytes(ReadFile(formPath)), form(Decode(bytes, formPath), objectName, formPath) {}

    QVariant Read(const QString& name) const {
        return ReadFormValue(form.Value(name), QFileInfo(path).absolutePath());
    }
    void WriteIcon(const QString& name, const QIcon& icon);
    QByteArray Encoded() const {
        return (bytes.startsWith(byteOrderMark) ? byteOrderMark.toByteArray() : QByteArray()) +
               form.Text().toUtf8();
    }

    QString path;
    /// The file as it was read or saved.
    QByteArray bytes;
    FormDocument form;
};

/// Whether an icon is the one that stands in the form cannot be seen from its pixels: it stays there unless
/// the control has another one by name, or has none where the form's can be shown.
void FormPropertyBag::Private::WriteIcon(const QString& name, const QIcon& icon) {
    const QIcon standing = Read(name).value<QIcon>();
    if (icon.isNull()) {
        if (!standing.isNull()) form.RemoveValue(name);
        return;
    }
    const QString element = WriteFormValue(icon, {}, false);
    if (!element.isEmpty() && icon.name() != standing.name()) form.SetValue(name, element);
}

FormPropertyBag::FormPropertyBag(const QString& path, const QString& objectName)
    : d(std::make_unique<Private>(path, objectName)) {}

FormPropertyBag::~FormPropertyBag() = default;

QVariant FormPropertyBag::ReadProperty(const QString& name, const QVariant& defaultValue) const {
    const QVariant value = d->Read(name);
    return value.isValid() ? value : defaultValue;
}

void FormPropertyBag::WriteProperty(const QString& name, const QVariant& value) {
    if (value.typeId() == QMetaType::QIcon) return d->WriteIcon(name, value.value<QIcon>());
    const QVariant designed = ForDesigner(name, value);
    // What says the same in other words stays in its own.
    if (designed.isValid() && d->Read(name) == designed) return;
    const QString element = WriteFormValue(designed, d->form.Value(name), IsTranslatable(name));
    if (element.isEmpty())
        throw Failure(ado::ErrorNumber::ValueRefused, d->path,
                      QStringLiteral("A form cannot hold this value of %1.").arg(name));
    d->form.SetValue(name, element);
}

void FormPropertyBag::Save() {
    const QByteArray changed = d->Encoded();
    if (changed == d->bytes) return;
    if (QFileInfo::exists(d->path) && ReadFile(d->path) != d->bytes)
        throw Failure(ado::ErrorNumber::WriteFile, d->path,
                      QStringLiteral("The file was changed by another program in the meantime."));
    try {
        files::Replace(d->path, changed);
    } catch (const files::Failure& failure) {
        throw Failure(ado::ErrorNumber::WriteFile, d->path, failure.Reason);
    }
    d->bytes = changed;
}

}  // namespace zephrin
