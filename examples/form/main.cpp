// A host whose form was drawn in Qt Designer, the control with it: HostForm.ui holds its connection, its
// tables, and what its user may do. The form's class reacts to two events and calls two methods.
//
//     form_host ["Provider=SQLite;Dialect=SQL Server;Data Source=shop.db"]
//
// Without an argument the connection of the form counts, which looks for shop.db in the present folder.

#include "HostForm.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    HostForm form(application.arguments().value(1));
    form.show();
    return application.exec();
}
