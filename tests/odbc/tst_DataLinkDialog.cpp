#include "platform/dialogs/DataLinkDialog.h"
#include "platform/dialogs/DataLinkText.h"

#include <zephrin/ado/Error.h>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace zephrin {
namespace {

/// Two drivers and a data source, and a server that knows one password.
class ShopProvider : public ado::Provider {
 public:
    bool Accepts(const QString&) const override { return true; }
    std::unique_ptr<ado::Session> Open(const ado::OpenRequest& request) const override {
        if (!request.ConnectionString.contains(QStringLiteral("PWD=right")))
            throw ado::Error(18456, QStringLiteral("Login failed for <b>me</b>"), QStringLiteral("FreeTDS"));
        return std::make_unique<ShopSession>();
    }
    ado::InstalledSources Installed() const override {
        return {{QStringLiteral("ODBC Driver 18 for SQL Server"), QStringLiteral("FreeTDS"),
                 QStringLiteral("PostgreSQL Unicode")},
                {{QStringLiteral("shop"), QStringLiteral("FreeTDS")}, {QStringLiteral("My MS Access"), {}}}};
    }

 private:
    struct NoRows : ado::Cursor {
        const QList<ado::Field> None;
        const QList<ado::Field>& Fields() const override { return None; }
        qint64 Fetch(ado::ColumnStore&, qint64) override { return 0; }
    };
    struct ShopSession : ado::Session {
        std::unique_ptr<ado::Cursor> Execute(const QString&, const ado::ExecuteOptions&) override {
            return std::make_unique<NoRows>();
        }
        std::unique_ptr<ado::Cursor> Tables() override { return std::make_unique<NoRows>(); }
        std::unique_ptr<ado::Cursor> Columns(const QString&) override { return std::make_unique<NoRows>(); }
    };
};

const ado::ProviderSet shopProviders{std::make_shared<ShopProvider>()};

template <class Widget>
Widget* Find(QWidget& dialog, const char* name) {
    auto* found = dialog.findChild<Widget*>(QLatin1StringView(name));
    EXPECT_TRUE(found) << name;
    return found;
}

TEST(DataLinkDialog, ReturnsWhatItWasGiven) {
    const struct {
        const char* Given;
        const char* Page;
        const char* Returned;
    } rows[] = {
        {"Provider=SQLite;Dialect=MS Access;Mode=Read;Data Source=/a b/c.db", "pageFile",
         "Provider=SQLite;Dialect=MS Access;Mode=Read;Data Source=/a b/c.db"},
        {"provider=sqlite;dialect=SQL Server;data source=\"/a;b.db\"", "pageFile",
         "Provider=SQLite;Dialect=SQL Server;Data Source=\"/a;b.db\""},
        {"Provider=SQLite;Dialect=SQL Server;Data Source=a.db;Timeout=3", "pageString",
         "Provider=SQLite;Dialect=SQL Server;Data Source=a.db;Timeout=3"},
        {"DSN=shop;UID=me;PWD={a;b}", "pageSource", "DSN=shop;UID=me;PWD={a;b};Dialect=SQL Server;"},
        {"DSN=elsewhere", "pageString", "DSN=elsewhere"},
        {"Driver={ODBC Driver 18 for SQL Server};Server=box,1444;Database=d;UID=u;PWD=p;", "pageDriver",
         "Driver={ODBC Driver 18 for SQL Server};Server=box,1444;Database=d;UID=u;PWD=p;"},
        {"Driver=FreeTDS;Server=box;Port=1444;Trusted_Connection=Yes", "pageDriver",
         "Driver={FreeTDS};Server=box;Port=1444;Trusted_Connection=Yes;Dialect=SQL Server;"},
        {"Driver=FreeTDS;Server=box;Trusted_Connection=No;UID=u", "pageDriver",
         "Driver={FreeTDS};Server=box;UID=u;Dialect=SQL Server;"},
        {"DSN=My MS Access", "pageSource", "DSN=My MS Access;"},
        {"DSN=My MS Access;Dialect=SQL Server", "pageString", "DSN=My MS Access;Dialect=SQL Server"},
        {"Driver=FreeTDS;Server=box;Encryption=require", "pageDriver",
         "Driver={FreeTDS};Server=box;Encryption=require;Dialect=SQL Server;"},
        {"Driver={ODBC Driver 18 for SQL Server};Server=box;Encrypt=true;TrustServerCertificate=yes",
         "pageDriver",
         "Driver={ODBC Driver 18 for SQL Server};Server=box;Encrypt=Yes;TrustServerCertificate=Yes;"},
        {"Driver={ODBC Driver 18 for SQL Server};Server=box;Encrypt=strict", "pageString",
         "Driver={ODBC Driver 18 for SQL Server};Server=box;Encrypt=strict"},
        {"Driver=PostgreSQL Unicode;Server=box;SSLmode=require", "pageDriver",
         "Driver={PostgreSQL Unicode};Server=box;SSLmode=require;Dialect=SQL Server;"},
        {"Driver=FreeTDS;Server=box;TDS_Version=7.4", "pageString",
         "Driver=FreeTDS;Server=box;TDS_Version=7.4"},
        {"provider=microsoft.jet.oledb.4.0;data source=/a b/shop.accdb", "pageFile",
         "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/a b/shop.accdb"},
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/a.mdb;Mode=Read", "pageString",
         "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/a.mdb;Mode=Read"},
        {"Driver={Microsoft Excel Driver (*.xls, *.xlsx, *.xlsm, *.xlsb)};DBQ={/a;b.xls};FirstRowHasNames=0",
         "pageFile",
         "Driver={Microsoft Excel Driver (*.xls, *.xlsx, *.xlsm, *.xlsb)};DBQ={/a;b.xls};FirstRowHasNames=0"},
        {"Driver={Microsoft Excel Driver (*.xls)};DBQ=/b.xls", "pageString",
         "Driver={Microsoft Excel Driver (*.xls)};DBQ=/b.xls"},
        {"", "pageFile", ""},
    };
    for (const auto& row : rows) {
        const DataLinkDialog dialog(QString::fromUtf8(row.Given), shopProviders);
        EXPECT_EQ(dialog.findChild<QTabWidget*>()->currentWidget()->objectName().toStdString(), row.Page)
            << row.Given;
        EXPECT_EQ(dialog.ConnectionString().toStdString(), row.Returned) << row.Given;
    }
}

TEST(DataLinkDialog, BuildsAStringByHand) {
    DataLinkDialog dialog({}, shopProviders);
    EXPECT_FALSE(Find<QPushButton>(dialog, "cmdOK")->isEnabled());
    Find<QLineEdit>(dialog, "txtFile")->setText(QStringLiteral("/s.xlsx"));
    EXPECT_EQ(Find<QComboBox>(dialog, "cmbFileKind")->currentText(), QStringLiteral("Excel workbook"));
    Find<QCheckBox>(dialog, "chkHeads")->setChecked(false);
    EXPECT_TRUE(dialog.ConnectionString().endsWith(QStringLiteral("};DBQ=/s.xlsx;FirstRowHasNames=0")));
    dialog.findChild<QTabWidget*>()->setCurrentIndex(2);
    Find<QComboBox>(dialog, "cmbDriver")->setCurrentIndex(0);
    EXPECT_FALSE(Find<QComboBox>(dialog, "cmbDriverDialect")->isEnabled()) << "the driver's name says it";
    QTest::keyClicks(Find<QLineEdit>(dialog, "txtServer"), QStringLiteral("box"));
    QTest::keyClicks(Find<QLineEdit>(dialog, "txtPort"), QStringLiteral("x14y33"));
    QTest::keyClicks(Find<QLineEdit>(dialog, "txtPassword"), QStringLiteral("a;b"));
    EXPECT_EQ(dialog.ConnectionString().toStdString(),
              "Driver={ODBC Driver 18 for SQL Server};Server=box,1433;PWD={a;b};");
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtPreview")->text(),
              QStringLiteral("Driver={ODBC Driver 18 for SQL "
                             "Server};Server=box,1433;PWD=\u2022\u2022\u2022\u2022\u2022\u2022;"));
    EXPECT_TRUE(Find<QPushButton>(dialog, "cmdOK")->isEnabled());
    Find<QCheckBox>(dialog, "chkTrusted")->setChecked(true);
    EXPECT_FALSE(Find<QLineEdit>(dialog, "txtPassword")->isEnabled());
    EXPECT_FALSE(dialog.ConnectionString().contains(QStringLiteral("PWD")));
}

TEST(DataLinkDialog, AsksForEncryptionInTheWordsOfEachDriver) {
    const struct {
        const char* Driver;
        const char* Both;  ///< what the ticks add, first the one for encryption, then the other
        const char* Encrypted;
        bool TrustAlone;
    } rows[] = {
        {"ODBC Driver 18 for SQL Server", "Encrypt=Yes;TrustServerCertificate=Yes;", "Encrypt=Yes;", true},
        {"FreeTDS", "Encryption=require;", "Encryption=require;", false},
        {"PostgreSQL Unicode", "SSLmode=require;", "SSLmode=verify-full;", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Driver);
        DataLinkDialog dialog({}, shopProviders);
        dialog.findChild<QTabWidget*>()->setCurrentIndex(2);
        auto* encrypt = Find<QCheckBox>(dialog, "chkEncrypt");
        auto* trust = Find<QCheckBox>(dialog, "chkTrustCertificate");
        EXPECT_FALSE(encrypt->isEnabled()) << "no driver, no words";
        auto* driver = Find<QComboBox>(dialog, "cmbDriver");
        driver->setCurrentIndex(driver->findText(QLatin1StringView(row.Driver)));
        EXPECT_EQ(trust->isEnabled(), row.TrustAlone);
        const auto says = [&](const char* words) {
            return dialog.ConnectionString().contains(u'}' + QStringLiteral(";") + QLatin1StringView(words));
        };
        encrypt->click();
        EXPECT_TRUE(says(row.Encrypted)) << qPrintable(dialog.ConnectionString());
        trust->click();
        EXPECT_TRUE(says(row.Both)) << qPrintable(dialog.ConnectionString());
    }
}

TEST(DataLinkDialog, ShowsTheKindOfDatabaseThatANameSays) {
    DataLinkDialog dialog({}, shopProviders);
    dialog.findChild<QTabWidget*>()->setCurrentIndex(1);
    auto* source = Find<QComboBox>(dialog, "cmbDataSource");
    auto* dialect = Find<QComboBox>(dialog, "cmbSourceDialect");
    source->setCurrentIndex(1);
    EXPECT_EQ(dialect->currentText(), QStringLiteral("Microsoft Access"));
    EXPECT_FALSE(dialect->isEnabled());
    source->setCurrentIndex(0);
    EXPECT_TRUE(dialect->isEnabled());
    dialog.findChild<QTabWidget*>()->setCurrentIndex(0);
    Find<QLineEdit>(dialog, "txtFile")->setText(QStringLiteral("/MS Access/shop.db"));
    EXPECT_EQ(Find<QComboBox>(dialog, "cmbFileDialect")->currentText(), QStringLiteral("Microsoft Access"));
}

TEST(DataLinkDialog, TestsTheConnectionAndForgetsTheAnswerOnAChange) {
    DataLinkDialog dialog(QStringLiteral("Driver=FreeTDS;Server=box;UID=me;PWD=wrong"), shopProviders);
    auto* answer = Find<QLabel>(dialog, "lblOutcome");
    auto* test = Find<QPushButton>(dialog, "cmdTest");
    test->click();
    EXPECT_EQ(answer->text(), QStringLiteral("Login failed for <b>me</b>\n(FreeTDS, number 18456)"));
    EXPECT_EQ(answer->textFormat(), Qt::PlainText);
    Find<QLineEdit>(dialog, "txtPassword")->setText(QStringLiteral("right"));
    EXPECT_TRUE(answer->text().isEmpty());
    test->click();
    EXPECT_TRUE(answer->text().startsWith(QStringLiteral("The connection works.")));
    EXPECT_FALSE(answer->text().contains(QStringLiteral("Dialect="))) << "the string says it";
    dialog.findChild<QTabWidget*>()->setCurrentIndex(3);
    Find<QPlainTextEdit>(dialog, "txtString")->setPlainText(QStringLiteral("DSN=x;\nPWD=right"));
    test->click();
    EXPECT_TRUE(answer->text().contains(QStringLiteral("Dialect=SQL Server")));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(DataLinkDialog, NamesEveryControlForScreenReaders) {
    DataLinkDialog dialog({}, shopProviders);
    dialog.show();
    for (QWidget* widget : dialog.findChildren<QWidget*>()) {
        if (widget->objectName().isEmpty() || widget->objectName().startsWith(QStringLiteral("qt_")))
            continue;
        if (widget->focusPolicy() == Qt::NoFocus) continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_TRUE(accessible);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty() &&
                     accessible->text(QAccessible::Value).isEmpty() &&
                     accessible->role() != QAccessible::StaticText)
            << qPrintable(widget->objectName());
    }
}

TEST(PromptNewConnection, SurvivesTheEndOfItsParent) {
    auto parent = std::make_unique<QWidget>();
    QTimer::singleShot(0, [&parent] { parent.reset(); });
    EXPECT_EQ(PromptNewConnection(parent.get(), QStringLiteral("DSN=shop"), shopProviders), QString());
    QTimer::singleShot(0, [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
    EXPECT_EQ(PromptNewConnection(nullptr, QStringLiteral("DSN=shop"), shopProviders), QString());
    QTimer::singleShot(0, [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->accept(); });
    EXPECT_EQ(PromptNewConnection(nullptr, QStringLiteral("DSN=x"), shopProviders), QStringLiteral("DSN=x"));
}

TEST(DataLinkText, MasksPasswordsWhereverTheyStand) {
    const struct {
        const char* Text;
        const char* Shown;
    } rows[] = {
        {"UID=a;PWD=secret;Server=b", "UID=a;PWD=######;Server=b"},
        {"pwd = {se;c}}ret} ;Server=b", "pwd = ###### ;Server=b"},
        {"Provider=SQLOLEDB;Password='se''c;ret'", "Provider=SQLOLEDB;Password=######"},
        {"Jet OLEDB:Database Password=x;PWD=", "Jet OLEDB:Database Password=######;PWD="},
        {"Provider=MSDASQL;Extended Properties=\"DSN=a;PWD=x\"",
         "Provider=MSDASQL;Extended Properties=######"},
        {"PWD={never closed;UID=a", "PWD=######;UID=a"},
        {"nonsense", "nonsense"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(datalink::Masked(QString::fromUtf8(row.Text)).replace(QChar(0x2022), u'#').toStdString(),
                  row.Shown);
}

}  // namespace
}  // namespace zephrin
