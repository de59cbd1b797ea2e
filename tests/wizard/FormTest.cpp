#include "wizard/FormTest.h"

#include "platform/ado/providers/AllProviders.h"
#include "platform/controls/ColouredText.h"
#include "runstate/Dialect.h"
#include "wizard/ListBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace zephrin::test {

FormTest::FormTest()
    : state(std::make_shared<ZPGGlobalDeclarations>(ado::providers::AllProviders(), prompts)) {}

FormTest::~FormTest() {
    form.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "an hourglass stayed";
}

void FormTest::Connect(const QString& dialect, const QString& copy) {
    const QString source = copy.isEmpty() ? QStringLiteral(ZEPHRIN_SHOP_DB ";Mode=Read") : copy;
    const QString text = QStringLiteral("Provider=SQLite;Dialect=%1;Data Source=%2").arg(dialect, source);
    const ConnectionErrors errors = OpenDatabaseConnection(*state, text, 0, 0, {}, {});
    ASSERT_TRUE(errors.IsEmpty()) << qPrintable(errors.Description());
    const ado::RecordsetPtr& tables = state->rsSchemaTables;
    for (qint64 row = 0; row < tables->RecordCount(); ++row) {
        tables->SetAbsolutePosition(row + 1);
        const QString type = tables->Text(u"TABLE_TYPE");
        const QString name = state->gDelimOpen + tables->Text(u"TABLE_NAME") + state->gDelimClose;
        if (type == QLatin1StringView("TABLE") || type == QLatin1StringView("VIEW"))
            state->OfferedTables.Add(name, name);
    }
}

void FormTest::Show() {
    form = std::make_unique<frmZPG>(state, QIcon(), QApplication::font());
    QObject::connect(form.get(), &frmZPG::Unloaded, form.get(),
                     [this](const QString& text) { unloads.append(text); });
    ASSERT_TRUE(form->Load());
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
}

void FormTest::Click(const char* name) const {
    auto* button = Find<QAbstractButton>(name);
    ASSERT_TRUE(button && button->isVisible()) << name;
    // A radio button or a check box reacts on its mark and text only.
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
}

QPoint FormTest::RowOf(ListBox* list, const QString& text) const {
    const auto rows = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, text, 1,
                                           Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (rows.isEmpty()) {
        ADD_FAILURE() << "no row " << qPrintable(text) << " in " << qPrintable(list->objectName());
        return {};
    }
    list->scrollTo(rows.first());
    return list->visualRect(rows.first()).center();
}

void FormTest::Pick(const char* name, const QString& text) const {
    auto* list = Find<ListBox>(name);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, RowOf(list, text));
}

void FormTest::DoubleClick(const char* name, const QString& text) const {
    auto* list = Find<ListBox>(name);
    const QPoint place = RowOf(list, text);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

void FormTest::Choose(const char* name, const QString& text) const {
    auto* combo = Find<QComboBox>(name);
    const int row = combo->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    ASSERT_GE(row, 0) << qPrintable(text) << " is not in " << name;
    ASSERT_TRUE(combo->isVisible() && combo->isEnabled()) << name;
    combo->showPopup();
    combo->view()->setCurrentIndex(combo->model()->index(row, 0));
    QTest::keyClick(combo->view(), Qt::Key_Return);
}

void FormTest::Type(const char* name, const QString& text) const {
    auto* widget = Find(name);
    ASSERT_TRUE(widget->isVisible() && widget->isEnabled()) << name;
    auto* combo = qobject_cast<QComboBox*>(widget);
    QTest::keyClicks(combo ? combo->lineEdit() : widget, text);
}

void FormTest::ChooseTab(int tab) const {
    QTabBar* bar = Find<QTabWidget>("TabZPG")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
}

int FormTest::CurrentTab() const {
    return Find<QTabWidget>("TabZPG")->currentIndex();
}

QStringList FormTest::Items(const char* name) const {
    const QAbstractItemModel* model = Find<ListBox>(name)->model();
    QStringList items;
    for (int row = 0; row < model->rowCount(); ++row) items << model->index(row, 0).data().toString();
    return items;
}

QString FormTest::Statement() const {
    return Find<controls::ColouredText>("txtSQL")->Text();
}

QString FormTest::Tabs() const {
    const auto* tabs = Find<QTabWidget>("TabZPG");
    QString picture;
    for (int i = 0; i < tabs->count(); ++i)
        picture += !tabs->isTabVisible(i) ? u'-' : tabs->isTabEnabled(i) ? u'1' : u'0';
    return picture;
}

void FormTest::ChooseOneTable(const QString& table, const QStringList& fields) const {
    DoubleClick("lstZPQTableSelection", table);
    ChooseTab(2);
    for (const QString& field : fields) DoubleClick("lstZPQFieldFrom", field);
    ChooseTab(3);
}

}  // namespace zephrin::test
