#include "QueryWindow.h"

#include "QueryPrompts.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStatusBar>

#include <memory>

using zephrin::Zephrin;

QueryWindow::QueryWindow(const QString& connectionString, const QDir& queries)
    : connection(connectionString),
      folder(queries),
      names(new QListWidget),
      statement(new QPlainTextEdit),
      builder(new Zephrin(this)) {
    statusBar()->setObjectName(QStringLiteral("status"));
    builder->SetPrompts(std::make_shared<QueryPrompts>(statusBar(), folder));
    LayOut();
    Listen();
    ListQueries();
}

void QueryWindow::LayOut() {
    setWindowTitle(tr("Saved queries"));
    names->setObjectName(QStringLiteral("names"));
    names->setAccessibleName(tr("Saved queries"));
    statement->setObjectName(QStringLiteral("statement"));
    statement->setAccessibleName(tr("Statement"));
    statement->setReadOnly(true);
    statement->setPlaceholderText(tr("The statement that was run last"));
    auto* openButton = new QPushButton(tr("&Open"));
    openButton->setObjectName(QStringLiteral("openButton"));
    connect(openButton, &QPushButton::clicked, this, &QueryWindow::OpenQuery);
    connect(names, &QListWidget::itemActivated, this, &QueryWindow::OpenQuery);
    auto* newButton = new QPushButton(tr("&New query"));
    newButton->setObjectName(QStringLiteral("newButton"));
    connect(newButton, &QPushButton::clicked, this, &QueryWindow::NewQuery);

    auto* centre = new QWidget;
    auto* left = new QVBoxLayout;
    left->addWidget(names);
    left->addWidget(openButton);
    left->addWidget(newButton);
    auto* layout = new QHBoxLayout(centre);
    layout->addLayout(left);
    layout->addWidget(statement, 1);
    setCentralWidget(centre);
}

void QueryWindow::Listen() {
    const auto tell = [this](const QString& text) { statusBar()->showMessage(text); };
    connect(builder, &Zephrin::ConnectionComplete, this,
            [this, tell](int& number, QString& description, QString&) {
                if (number == 0)
                    builder->ZPBShowZephrin();
                else
                    tell(description);
            });
    connect(builder, &Zephrin::QueryExecuted, this,
            [this, tell](int& number, QString& error, QString& sql, zephrin::ado::RecordsetPtr& rows) {
                statement->setPlainText(sql.trimmed());
                tell(number == 0 ? tr("%n row(s)", nullptr, static_cast<int>(rows->RecordCount())) : error);
            });
    connect(builder, &Zephrin::QuerySaved, this, [this, tell](QString& file) {
        ListQueries();
        tell(tr("Saved: %1").arg(QFileInfo(file).completeBaseName()));
    });
    connect(builder, &Zephrin::QueryDeleted, this, [this, tell](QString& file) {
        ListQueries();
        tell(tr("Deleted: %1").arg(QFileInfo(file).completeBaseName()));
    });
    // The text is empty unless the wizard closed because it could not open the query that it was to show.
    connect(builder, &Zephrin::ZPBUnloaded, this, [tell](QString& loadError) {
        if (!loadError.isEmpty()) tell(loadError);
    });
}

void QueryWindow::NewQuery() {
    constexpr bool removeSystemTables = true;
    builder->ZPBMakeConnection(connection, {}, {}, Zephrin::Omitted, Zephrin::Omitted, 0, false, {},
                               removeSystemTables);
}

void QueryWindow::OpenQuery() {
    const QListWidgetItem* chosen = names->currentItem();
    if (!chosen) return;
    // The query brings the connection that it was saved with, so this connects nothing and raises no event.
    constexpr bool openQuery = true;
    builder->ZPBMakeConnection({}, {}, {}, Zephrin::Omitted, Zephrin::Omitted, 0, openQuery,
                               QueryFile(folder, chosen->text()));
    builder->ZPBShowZephrin();
}

void QueryWindow::ListQueries() {
    names->clear();
    names->addItems(QueryNames(folder));
}
