#pragma once

#include "platform/ado/Provider.h"
#include "platform/dialogs/DataLinkText.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

namespace zephrin::datalink {

struct DriverLink;

/// One way to say where a database is. Each page is whole in itself: it knows its string at any moment.
class Page : public QWidget {
    Q_OBJECT
 public:
    using QWidget::QWidget;
    /// The string that the page stands for; empty while something needed is missing.
    virtual QString Text() const = 0;
    /// Shows `connectionString`; false, and nothing changed, where it says more than this page could keep.
    virtual bool Show(const QString& connectionString) = 0;
    /// What the user should look at first.
    virtual QWidget* First() const = 0;

 Q_SIGNALS:
    void Changed();
};

/// A file: a database of the embedded engine, an Access database, or an Excel workbook.
class FilePage : public Page {
    Q_OBJECT
 public:
    explicit FilePage(QWidget* parent = nullptr);
    QString Text() const override;
    bool Show(const QString& connectionString) override;
    QWidget* First() const override;

 private:
    void Browse();
    void FollowSuffix();
    void FollowKind();
    FileKind Kind() const;

    QLineEdit* path;
    QComboBox* kind;
    QComboBox* dialect;
    QCheckBox* readOnly;
    QCheckBox* heads;
};

/// A data source that is set up on this computer.
class SourcePage : public Page {
    Q_OBJECT
 public:
    explicit SourcePage(const QList<ado::InstalledSources::DataSource>& sources, QWidget* parent = nullptr);
    QString Text() const override;
    bool Show(const QString& connectionString) override;
    QWidget* First() const override;

 private:
    QComboBox* source;
    QLineEdit* user;
    QLineEdit* password;
    QComboBox* dialect;
};

/// An installed driver with its server, database and login.
class DriverPage : public Page {
    Q_OBJECT
 public:
    explicit DriverPage(const QStringList& drivers, QWidget* parent = nullptr);
    QString Text() const override;
    bool Show(const QString& connectionString) override;
    QWidget* First() const override;

 private:
    DriverLink LinkWith(const QString& itsDialect) const;
    void FollowDriver();

    QComboBox* driver;
    QLineEdit* server;
    QLineEdit* port;
    QLineEdit* database;
    QCheckBox* trusted;
    QLineEdit* user;
    QLineEdit* password;
    QCheckBox* encrypt;
    QCheckBox* trustCertificate;
    QComboBox* dialect;
};

/// The string itself.
class TextPage : public Page {
    Q_OBJECT
 public:
    explicit TextPage(QWidget* parent = nullptr);
    QString Text() const override;
    bool Show(const QString& connectionString) override;
    QWidget* First() const override;

 private:
    QPlainTextEdit* text;
};

}  // namespace zephrin::datalink
