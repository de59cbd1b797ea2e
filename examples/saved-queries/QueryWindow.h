#pragma once

#include <zephrin/Zephrin.h>

#include <QDir>
#include <QListWidget>
#include <QMainWindow>
#include <QPlainTextEdit>

/// The names of the saved queries, the statement that was run last, and the status line.
class QueryWindow : public QMainWindow {
 public:
    QueryWindow(const QString& connectionString, const QDir& queries);

 private:
    void LayOut();
    void Listen();
    void NewQuery();
    void OpenQuery();
    void ListQueries();

    QString connection;
    QDir folder;
    QListWidget* names;
    QPlainTextEdit* statement;
    zephrin::Zephrin* builder;
};
