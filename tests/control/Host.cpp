#include "control/Host.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QTabWidget>

#include <gtest/gtest.h>

namespace zephrin::test {

Host::Host(const QString& script) : database(script) {
    control->SetPrompts(prompts);
    Listen();
}

Host::~Host() {
    delete control;
    Drain();
}

void Host::Note(const QString& event, const QString& arguments) {
    log << (event + (arguments.isEmpty() ? QString() : u' ' + arguments));
    // The handler may end this host's control; what it uses must outlive that.
    const auto handler = OnEvent;
    if (handler) handler(event);
}

void Host::Listen() {
    QObject::connect(
        control, &Zephrin::QueryExecuted, control,
        [this](int& number, QString& error, QString&, ado::RecordsetPtr& results) {
            rows = results;
            Note(QStringLiteral("QueryExecuted"),
                 QString::number(number) + (error.isEmpty() ? QString() : QStringLiteral(" error")));
        });
    QObject::connect(control, &Zephrin::ConnectionComplete, control,
                     [this](int& number, QString& description, QString& source) {
                         Note(QStringLiteral("ConnectionComplete"),
                              QStringLiteral("%1 '%2' '%3'").arg(number).arg(description, source));
                     });
    QObject::connect(control, &Zephrin::ZPBUnloaded, control, [this](QString& error) {
        EXPECT_EQ(frmZPG::OpenForm(), nullptr);
        Note(QStringLiteral("ZPBUnloaded"), error);
    });
    QObject::connect(control, &Zephrin::ZPBAlreadyLoaded, control,
                     [this] { Note(QStringLiteral("ZPBAlreadyLoaded")); });
    QObject::connect(control, &Zephrin::QuerySaved, control,
                     [this](QString& name) { Note(QStringLiteral("QuerySaved"), name); });
    QObject::connect(control, &Zephrin::QueryDeleted, control,
                     [this](QString& name) { Note(QStringLiteral("QueryDeleted"), name); });
    QObject::connect(control, &Zephrin::UserCreatedView, control, [this](QString& name, QString& action) {
        Note(QStringLiteral("UserCreatedView"), name + u' ' + action);
    });
    QObject::connect(control, &Zephrin::ExportToExcel, control,
                     [this] { Note(QStringLiteral("ExportToExcel")); });
    QObject::connect(control, &Zephrin::PropertyChanged, control,
                     [this](const QString& name) { Note(QStringLiteral("PropertyChanged"), name); });
}

QStringList Host::Offer() const {
    const clsTableCollection tables = control->ZPBTableCollection();
    QStringList names;
    for (int position = 1; position <= tables.CountTableCollection(); ++position)
        names << tables.GetTableName(position);
    return names;
}

void Host::Drain() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

QWidget* Host::Find(const char* name) {
    const frmZPG* form = frmZPG::OpenForm();
    auto* widget = form ? form->findChild<QWidget*>(QString::fromLatin1(name)) : nullptr;
    if (!widget) ADD_FAILURE() << "no control " << name;
    return widget;
}

void Host::Click(const char* name) {
    auto* button = qobject_cast<QAbstractButton*>(Find(name));
    ASSERT_TRUE(button && button->isEnabled()) << name;
    button->click();
}

void Host::ChooseTab(int tab) {
    auto* tabs = qobject_cast<QTabWidget*>(Find("TabZPG"));
    ASSERT_TRUE(tabs && tabs->isTabEnabled(tab)) << tab;
    tabs->setCurrentIndex(tab);
}

void Host::ChooseEverything() {
    Click("cmdZPQTableRightAll");
    ChooseTab(2);
    Click("cmdZPQFieldRightAll");
    ChooseTab(3);
}

}  // namespace zephrin::test
