// The least that a host does: connect, show the wizard, hear of the queries that are run.
//
//     minimal_host "Provider=SQLite;Dialect=SQL Server;Data Source=shop.db"
//
// Without a connection string the control asks its user for a connection.

#include <zephrin/Zephrin.h>

#include <QApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    zephrin::Zephrin builder;
    bool connected = false;

    QObject::connect(&builder, &zephrin::Zephrin::ConnectionComplete,
                     [&connected](int& number, QString& description, QString&) {
                         connected = number == 0;
                         if (!connected) QTextStream(stderr) << description << '\n';
                     });
    QObject::connect(&builder, &zephrin::Zephrin::QueryExecuted,
                     [](int& number, QString& error, QString& sql, zephrin::ado::RecordsetPtr& rows) {
                         QTextStream out(stdout);
                         out << sql.trimmed() << '\n';
                         if (number != 0)
                             out << error << '\n';
                         else
                             out << rows->RecordCount() << " rows\n";
                     });

    builder.ZPBMakeConnection(application.arguments().value(1));
    if (!connected) return 1;
    builder.ZPBShowZephrin();
    // The wizard is the only window here, so that closing it ends the program.
    return application.exec();
}
