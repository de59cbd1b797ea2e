// A host that keeps its users' queries: they see names in a list, never a file dialog. QueryPrompts puts the
// wizard's boxes into the status line and answers its questions for files with names of the host's own
// folder; QueryWindow opens a query by its name and hears when one was saved, deleted, or could not be
// opened.
//
//     saved_queries_host CONNECTION [FOLDER]
//     saved_queries_host "Provider=SQLite;Dialect=SQL Server;Data Source=shop.db" queries
//
// Without a folder the queries lie with the program's own data.

#include "QueryWindow.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTextStream>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QDir folder(QDir(arguments.value(2, own + QStringLiteral("/queries"))).absolutePath());
    if (arguments.size() < 2 || !folder.mkpath(QStringLiteral("."))) {
        QTextStream(stderr) << "usage: saved_queries_host CONNECTION [FOLDER]\n";
        return 2;
    }
    QueryWindow window(arguments.at(1), folder);
    window.show();
    return application.exec();
}
