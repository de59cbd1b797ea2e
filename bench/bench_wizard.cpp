// What a person waits for in the window: the wizard on a schema of 5,000 tables and 100,000 columns, and the
// grid on results of a thousand and of a million rows.

#include "bench/Measure.h"
#include "bench/ResultData.h"
#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"
#include "platform/controls/DataGrid.h"

#include <zephrin/Zephrin.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QListView>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>

#include <sqlite3.h>

namespace zephrin::bench {
namespace {

constexpr int Tables = 5000;
constexpr int ColumnsOfTable = 20;

void MakeSchema(const QString& path) {
    sqlite3* database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr);
    for (int table = 0; table < Tables; ++table) {
        QByteArray sql = "CREATE TABLE \"Table " + QByteArray::number(table) + "\" (";
        for (int column = 0; column < ColumnsOfTable; ++column)
            sql += (column ? ", " : "") + ("\"Column " + QByteArray::number(column)) + "\" nvarchar(40)";
        sqlite3_exec(database, (sql + ")").constData(), nullptr, nullptr, nullptr);
    }
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(database);
}

QString ConnectionTo(const QString& path) {
    return QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=") + path;
}

QWidget* Form() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"frmZPG") return window;
    return nullptr;
}

void MeasureSchema(const QString& path) {
    MakeSchema(path);
    Zephrin control;
    const double connect = Seconds([&] { control.ZPBMakeConnection(ConnectionTo(path)); });
    const double show = Seconds([&] {
        control.ZPBShowZephrin();
        QApplication::processEvents();
    });
    auto* list = Form()->findChild<QListView*>(QStringLiteral("lstZPQTableSelection"));
    const double move = Seconds([&] {
        list->setCurrentIndex(list->model()->index(7, 0));
        Form()->findChild<QPushButton*>(QStringLiteral("cmdZPQTableRight"))->click();
        QApplication::processEvents();
    });
    const double fields = Seconds([&] {
        Form()->findChild<QTabWidget*>(QStringLiteral("TabZPG"))->setCurrentIndex(2);
        QApplication::processEvents();
    });
    std::printf("Schema of %d tables and %d columns\n", Tables, Tables * ColumnsOfTable);
    PrintRow("connect and read the tables", connect, connect);
    PrintRow("show the wizard", show, connect);
    PrintRow("move one table", move, connect);
    PrintRow("leave the tab, fields of the table loaded", fields, connect);
}

void MeasureGrid(const QString& path, int limit) {
    ado::Connection connection(ado::providers::AllProviders());
    connection.Open(ConnectionTo(path));
    auto rows = std::make_shared<ado::Recordset>();
    rows->SetMaxRecords(limit);
    rows->Open(QStringLiteral("SELECT * FROM [Sales]"), connection);
    controls::DataGrid grid;
    grid.resize(900, 500);
    grid.show();
    QApplication::processEvents();
    const double paint = Seconds([&] {
        grid.SetDataSource(rows);
        grid.grab();
    });
    const double scroll = Seconds([&] {
        grid.Pane(0)->scrollToBottom();
        grid.grab();
    });
    std::printf("Grid on %lld rows\n", rows->RecordCount());
    PrintRow("bind and first paint", paint, paint);
    PrintRow("to its end, painted", scroll, paint);
}

/// The longest time in which the wizard can't be painted, while somebody asks it to all the time.
class PaintWatch : public QObject {
 public:
    explicit PaintWatch(QWidget* window) : form(window) {
        form->installEventFilter(this);
        timer.start(0);
        QObject::connect(&timer, &QTimer::timeout, form, qOverload<>(&QWidget::update));
        last.start();
    }
    qint64 Longest = 0;

 private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) Longest = std::max(Longest, last.restart());
        return false;
    }
    QWidget* form;
    QTimer timer;
    QElapsedTimer last;
};

void TypeAndRun(const QString& statement) {
    Form()->findChild<QPlainTextEdit*>(QStringLiteral("txtSQL"))->setPlainText(statement);
    Form()->findChild<QPushButton*>(QStringLiteral("cmdRunQuery"))->click();
}

void MeasureWaiting(const QString& path) {
    Zephrin control;
    control.ZPBMakeConnection(ConnectionTo(path));
    control.ZPBShowZephrin();
    Form()->findChild<QPushButton*>(QStringLiteral("cmdZPQTableRightAll"))->click();
    auto* tabs = Form()->findChild<QTabWidget*>(QStringLiteral("TabZPG"));
    tabs->setCurrentIndex(2);
    Form()->findChild<QPushButton*>(QStringLiteral("cmdZPQFieldRightAll"))->click();
    tabs->setCurrentIndex(3);
    QApplication::processEvents();
    std::printf("Waiting\n");
    {
        PaintWatch watch(Form());
        const double whole = Seconds([] { TypeAndRun(QStringLiteral("SELECT * FROM [Sales]")); });
        std::printf(
            "  longest time between two paintings while %.2f s are waited: %lld ms   wanted: at most 100\n",
            whole, watch.Longest);
    }
    const struct {
        const char* What;
        const char* Statement;
    } rows[] = {
        {"a cross join", "SELECT COUNT(*) FROM Sales a, Sales b WHERE a.Id + b.Id < 0"},
        {"a sort", "SELECT TOP 1 a.Id FROM Sales a, Sales b ORDER BY a.Price * b.Price, b.Id"},
        {"an aggregate", "SELECT a.Id, STDEV(b.Price) FROM Sales a, Sales b GROUP BY a.Id"},
        {"a user function", "SELECT MAX(LEFT(a.City, 2) + SUBSTRING(b.City, 1, 2)) FROM Sales a, Sales b"},
    };
    for (const auto& row : rows) {
        tabs->setCurrentIndex(3);
        QElapsedTimer pressed;
        QTimer::singleShot(2000, Form(), [&] {
            pressed.start();
            QApplication::postEvent(Form(), new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
        });
        TypeAndRun(QString::fromUtf8(row.Statement));
        std::printf("  from Escape to a usable wizard in %-16s %lld ms   wanted: at most 200\n", row.What,
                    pressed.isValid() ? pressed.elapsed() : -1);
    }
}

void Main() {
    const QTemporaryDir folder;
    MeasureSchema(folder.filePath(QStringLiteral("schema.db")));
    const QString sales = folder.filePath(QStringLiteral("sales.db"));
    MakeSales(sales, 1'000'000);
    MeasureWaiting(sales);
    for (const int limit : {1000, 1'000'000, 1000, 1'000'000}) MeasureGrid(sales, limit);
}

}  // namespace
}  // namespace zephrin::bench

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    zephrin::bench::Main();
}
