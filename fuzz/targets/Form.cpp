#include "control/FormDocument.h"
#include "control/FormValue.h"
#include "fuzz/Targets.h"

#include <zephrin/ado/Error.h>

#include <QVariant>

namespace zephrin::fuzz {

namespace {

const QString widget = QStringLiteral("builder"), file = QStringLiteral("form.ui");
const QString element = QStringLiteral("<string>a &lt;b&gt; &amp; c</string>");

/// Sets a property, and looks whether the form still reads and holds it.
void SetAndRead(FormDocument document, const QString& property) {
    try {
        document.SetValue(property, element);
    } catch (const ado::Error&) {
        return;
    }
    FormDocument again(document.Text(), widget, file);
    Require(again.Value(property) == element, QStringLiteral("what was set isn't there: ") + document.Text());
    again.RemoveValue(property);
    FormDocument without(again.Text(), widget, file);
    Require(without.Value(property).isEmpty(), QStringLiteral("what was removed is there: ") + again.Text());
}

}  // namespace

void FeedForm(const QByteArray& input) {
    std::optional<FormDocument> document;
    try {
        document.emplace(QString::fromUtf8(input), widget, file);
    } catch (const ado::Error&) {
        return;
    }
    for (const char* name : {"ZPBRunTimeControlCaption", "ZPBModalForm", "ZPBLabelFont"}) {
        const QString property = QString::fromLatin1(name);
        const QString value = document->Value(property);
        const QVariant read = ReadFormValue(value, QString());
        if (read.isValid()) (void)WriteFormValue(read, value, true);
        try {
            SetAndRead(*document, property);
        } catch (const ado::Error& error) {
            throw Broken("a form that was changed can't be read: " + error.Description().toStdString());
        }
    }
}

}  // namespace zephrin::fuzz
