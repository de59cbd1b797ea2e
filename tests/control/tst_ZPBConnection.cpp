#include "support/ScratchDatabase.h"
#include "support/ScriptedPrompts.h"

#include <zephrin/ZPBConnection.h>
#include <zephrin/Zephrin.h>

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace zephrin {

namespace {

/// A control, and the page on which somebody sets it up.
struct Desk {
    explicit Desk(const char* type = "", const char* tables = "", bool hasConnection = true) {
        if (hasConnection) control.SetZPBConnectionString(database.ConnectionString());
        control.SetZPBCommandType(QString::fromLatin1(type));
        control.SetZPBTableString(QString::fromLatin1(tables));
        page->SetPrompts(prompts);
        QObject::connect(page, &ZPBConnection::Changed, page, [this](bool changed) {
            told << (changed ? QStringLiteral("changed") : QStringLiteral("unchanged"));
        });
        page->PropertyPage_SelectionChanged({&control});
        page->show();
    }
    ~Desk() { delete page; }

    template <class Widget>
    Widget* Find(const char* name) const {
        auto* found = page->findChild<Widget*>(QLatin1StringView(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QStringList Items(const char* list) const {
        QStringList texts;
        const auto* found = Find<QListWidget>(list);
        for (int row = 0; row < found->count(); ++row)
            texts << found->item(row)->text() +
                         (found->item(row)->isSelected() ? QStringLiteral("!") : QString());
        return texts;
    }
    std::string Picture() const {
        return (Items("lstZPGSelTables").join(u' ') + u'|' + Items("lstZPGSelectedTables").join(u' '))
            .toStdString();
    }
    void Click(const char* row, Qt::KeyboardModifiers keys = {}) const {
        auto* list = Find<QListWidget>("lstZPGSelTables");
        const QList<QListWidgetItem*> items = list->findItems(QLatin1StringView(row), Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1) << row;
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, list->visualItemRect(items[0]).center());
    }
    void Choose(const char* type) const {
        auto* combo = Find<QComboBox>("cmbZPGCommandType");
        combo->setFocus();
        QTest::keyClicks(combo, QLatin1StringView(type).left(1).toString());
    }

    test::ScratchDatabase database{test::SmallShopScript()};
    std::shared_ptr<test::ScriptedPrompts> prompts = std::make_shared<test::ScriptedPrompts>();
    Zephrin control;
    QPointer<ZPBConnection> page = new ZPBConnection;
    QStringList told;
};

constexpr const char* shopTables = "* [Customers] [Odd'Name] [Order Details] [Orders]";

}  // namespace

TEST(ConnectionPage, SaysWhatItIs) {
    const Desk desk;
    EXPECT_EQ(desk.page->windowTitle(), QStringLiteral("Connection"));
    EXPECT_EQ(desk.Find<QGroupBox>("fraConnection")->title(), QStringLiteral("Connection and Record Source"));
    EXPECT_EQ(desk.Find<QPushButton>("cmdBuildConnection")->text(), QStringLiteral("B&uild..."));
    QStringList labels;
    for (const QLabel* label : desk.page->findChildren<QLabel*>()) {
        ASSERT_NE(label->buddy(), nullptr);
        labels << label->buddy()->objectName() + u'=' + label->text();
    }
    labels.sort();
    EXPECT_EQ(labels.join(u'\n').toStdString(),
              "cmbZPGCommandType=Command Type:\n"
              "lstZPGSelTables=Select Table(s) and/or Stored Procedure(s):\n"
              "lstZPGSelectedTables=Selected Table(s) and/or Stored Procedure(s): \n"
              "txtCommandTimeout=Command Timeout:\n"
              "txtConnectionTimeout=Connection Timeout:\n"
              "txtZPGDataConnection=Connection String:");
}

TEST(ConnectionPage, IsVisitedInItsOrderAndSpeaks) {
    const Desk desk("Tables");
    desk.page->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(desk.page));
    auto* first = desk.Find<QLineEdit>("txtZPGDataConnection");
    first->setFocus();
    QStringList visited;
    do {
        QWidget* stop = QApplication::focusWidget();
        ASSERT_NE(stop, nullptr);
        visited << stop->objectName();
        const QAccessibleInterface* voice = QAccessible::queryAccessibleInterface(stop);
        EXPECT_FALSE(voice->text(QAccessible::Name).isEmpty()) << qPrintable(visited.last());
        EXPECT_FALSE(stop->toolTip().isEmpty()) << qPrintable(visited.last());
        QTest::keyClick(stop, Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && visited.size() < 20);
    EXPECT_EQ(
        visited.join(u' ').toStdString(),
        "txtZPGDataConnection cmdBuildConnection cmbZPGCommandType lstZPGSelTables lstZPGSelectedTables "
        "txtConnectionTimeout txtCommandTimeout");
}

TEST(ConnectionPage, StoresAConnectionAndTablesByKeysAndClicks) {
    Desk desk("", "", false);
    EXPECT_FALSE(desk.Find<QComboBox>("cmbZPGCommandType")->isEnabled());
    QTest::keyClicks(desk.Find<QLineEdit>("txtZPGDataConnection"), desk.database.ConnectionString());
    EXPECT_TRUE(desk.page->IsChanged());
    desk.Choose("Tables");
    EXPECT_EQ(desk.Picture(), std::string(shopTables) + '|');
    desk.Click("[Orders]");
    desk.Click("[Customers]", Qt::ControlModifier);
    EXPECT_EQ(desk.Items("lstZPGSelectedTables").join(u' '), QStringLiteral("[Customers] [Orders]"));
    desk.Find<QLineEdit>("txtCommandTimeout")->selectAll();
    QTest::keyClicks(desk.Find<QLineEdit>("txtCommandTimeout"), QStringLiteral("5"));
    EXPECT_EQ(desk.control.ZPBConnectionString(), QString()) << "nothing is stored before it is applied";

    desk.page->PropertyPage_ApplyChanges();
    EXPECT_EQ(desk.told.join(u' '), QStringLiteral("changed unchanged"));
    EXPECT_EQ(desk.control.ZPBConnectionString(), desk.database.ConnectionString());
    EXPECT_EQ(desk.control.ZPBCommandType(), QStringLiteral("Tables"));
    EXPECT_EQ(desk.control.ZPBTableString(), QStringLiteral(";[Customers];[Orders]"));
    EXPECT_EQ(desk.control.ZPBCommandTimeout(), 5);
    EXPECT_EQ(desk.control.ZPBActiveConnectionString(), QString()) << "the page has a connection of its own";
    EXPECT_EQ(desk.control.ZPBTableCollection().CountTableCollection(), 0);
    desk.control.ZPBMakeConnection();
    EXPECT_EQ(desk.control.ZPBTableCollection().CountTableCollection(), 2);
    EXPECT_TRUE(desk.prompts->Boxes.isEmpty());
}

TEST(ConnectionPage, SelectsEverythingByTheStar) {
    Desk desk("Tables", ";[Gone];[Customers];Orders");
    EXPECT_EQ(desk.Picture(), "* [Customers]! [Odd'Name] [Order Details] [Orders]!|[Gone] [Customers] Orders")
        << "what is stored is selected";
    EXPECT_TRUE(desk.told.isEmpty()) << "opening leaves the page unmarked";
    desk.Click("*");
    EXPECT_EQ(desk.Picture(),
              "* [Customers]! [Odd'Name]! [Order Details]! [Orders]!|[Customers] [Odd'Name] [Order Details] "
              "[Orders]");
    desk.Click("[Orders]", Qt::ControlModifier);
    EXPECT_EQ(desk.Picture(),
              "* [Customers]! [Odd'Name]! [Order Details]! [Orders]|[Customers] [Odd'Name] [Order Details]");
    desk.Click("[Orders]");
    EXPECT_EQ(desk.Picture(), "* [Customers] [Odd'Name] [Order Details] [Orders]!|[Orders]");
    desk.Choose("Views");
    EXPECT_EQ(desk.Picture(), "* [BigOrders]|[Orders]");
    EXPECT_EQ(desk.told.join(u' '), QStringLiteral("changed"));
}

TEST(ConnectionPage, BuildsAConnectionInADialog) {
    for (const bool cancelled : {false, true}) {
        Desk desk("Tables", ";[Orders]");
        const QString other = desk.database.ConnectionString(QStringLiteral("MS Access"));
        desk.prompts->Texts = {cancelled ? QString() : other};
        QTest::mouseClick(desk.Find<QPushButton>("cmdBuildConnection"), Qt::LeftButton);
        EXPECT_EQ(desk.Find<QLineEdit>("txtZPGDataConnection")->text(),
                  cancelled ? desk.database.ConnectionString() : other);
        EXPECT_EQ(desk.Picture(), "|");
        EXPECT_EQ(desk.Find<QComboBox>("cmbZPGCommandType")->currentText(), QString());
        desk.page->PropertyPage_ApplyChanges();
        EXPECT_EQ(desk.control.ZPBTableString() + desk.control.ZPBCommandType(), QString());
    }
}

TEST(ConnectionPage, TellsOfAFailureEachTimeItIsTried) {
    Desk desk;
    desk.control.SetZPBRunTimeControlCaption(QStringLiteral("My Queries"));
    desk.page->PropertyPage_SelectionChanged({&desk.control});
    desk.Find<QLineEdit>("txtZPGDataConnection")->setText(QStringLiteral("Provider=Unheard"));
    auto* combo = desk.Find<QComboBox>("cmbZPGCommandType");
    for (int attempt = 1; attempt <= 2; ++attempt) {
        // A pick from the list, of the same type the second time.
        combo->showPopup();
        QTest::keyClick(combo->view(), Qt::Key_Home);
        QTest::keyClick(combo->view(), Qt::Key_Return);
        ASSERT_EQ(desk.prompts->Boxes.size(), attempt);
    }
    const auto& box = desk.prompts->Boxes.last();
    EXPECT_EQ(box.Text.toStdString(), "Database Provider not supported\r\n-2147221491\r\nProvider Property");
    EXPECT_EQ(box.Style, BoxStyle::OkOnly);
    EXPECT_EQ(box.Title, QStringLiteral("My Queries"));
    EXPECT_FALSE(desk.Find<QListWidget>("lstZPGSelTables")->isEnabled());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(ConnectionPage, ComplainsOfATimeAtEachChange) {
    Desk desk;
    auto* time = desk.Find<QLineEdit>("txtConnectionTimeout");
    time->setFocus();
    time->selectAll();
    QTest::keyClick(time, Qt::Key_Delete);
    QTest::keyClicks(time, QStringLiteral("-5s"));
    // Empty, "-" and "-5s" are no numbers; "-5" is.
    ASSERT_EQ(desk.prompts->Boxes.size(), 3);
    EXPECT_EQ(desk.prompts->Boxes.last().Text, QStringLiteral("Must be a number greater or equal to 0"));
    EXPECT_EQ(desk.prompts->Boxes.last().Style, BoxStyle::Critical);
    EXPECT_EQ(desk.prompts->Boxes.last().Title, QStringLiteral("ZPBConnection Control"));
    EXPECT_EQ(time->text(), QStringLiteral("-5s"));
    desk.page->PropertyPage_ApplyChanges();
    EXPECT_EQ(desk.control.ConnectionTimeout(), 60);
    EXPECT_FALSE(desk.page->IsChanged());
}

TEST(ConnectionPage, FollowsTheSelection) {
    Desk desk("Both", ";[Orders]");
    desk.Click("[Customers]");
    EXPECT_EQ(desk.told.join(u' '), QStringLiteral("changed"));
    desk.page->PropertyPage_SelectionChanged({&desk.control});
    EXPECT_EQ(desk.Picture(), "* [BigOrders] [Customers] [Odd'Name] [Order Details] [Orders]!|[Orders]");
    EXPECT_EQ(desk.told.join(u' '), QStringLiteral("changed unchanged"));
    desk.told.clear();
    Zephrin other;
    other.SetZPBCommandType(QStringLiteral("Procedures"));
    desk.page->PropertyPage_SelectionChanged({&other, &desk.control});
    EXPECT_EQ(desk.Picture(), "|");
    EXPECT_EQ(desk.Find<QComboBox>("cmbZPGCommandType")->currentText(), QStringLiteral("Procedures"));
    desk.page->PropertyPage_ApplyChanges();
    EXPECT_EQ(other.ZPBCommandType(), QStringLiteral("Procedures"));

    desk.page->PropertyPage_SelectionChanged({});
    EXPECT_FALSE(desk.Find<QGroupBox>("fraConnection")->isEnabled());
    desk.page->PropertyPage_ApplyChanges();
    desk.page->PropertyPage_SelectionChanged({&desk.control});
    EXPECT_EQ(desk.Items("lstZPGSelectedTables"), QStringList(QStringLiteral("[Orders]")));
    QObject stranger;
    desk.page->PropertyPage_SelectionChanged({&stranger});
    EXPECT_EQ(desk.Find<QLineEdit>("txtCommandTimeout")->text(), QStringLiteral("60"));
    EXPECT_TRUE(desk.told.isEmpty());
}

TEST(ConnectionPage, AppliesThroughTheWriterOfItsHost) {
    Desk desk("Tables", ";[Orders]");
    QByteArrayList names;
    desk.page->SetWriter([&](QObject& control, const QList<std::pair<QByteArray, QVariant>>& values) {
        EXPECT_EQ(&control, &desk.control);
        for (const auto& [name, value] : values) names << name;
        delete desk.page;
    });
    desk.page->PropertyPage_ApplyChanges();
    EXPECT_EQ(names.join(' ').toStdString(),
              "ZPBConnectionString ZPBCommandTimeout ConnectionTimeout ZPBCommandType ZPBTableString");
    EXPECT_EQ(desk.page, nullptr);
}

TEST(ConnectionPage, MayGoWhileItAsksForAConnection) {
    class Going : public test::ScriptedPrompts {
     public:
        QPointer<ZPBConnection> page;
        QString PromptNewConnection(const QString&) override {
            delete page;
            return QStringLiteral("Provider=SQLite");
        }
    };
    Desk desk("Tables", ";[Orders]");
    const auto going = std::make_shared<Going>();
    going->page = desk.page;
    desk.page->SetPrompts(going);
    QTest::mouseClick(desk.Find<QPushButton>("cmdBuildConnection"), Qt::LeftButton);
    EXPECT_EQ(desk.page, nullptr);
    EXPECT_EQ(desk.control.ZPBTableString(), QStringLiteral(";[Orders]"));
}

}  // namespace zephrin
