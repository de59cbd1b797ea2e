#include "runstate/ListState.h"

#include <QAbstractItemModelTester>

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

QString Picture(const ListState& list) {
    QStringList items = list.Items();
    if (list.ListIndex() >= 0) items[list.ListIndex()] = u'<' + list.Text() + u'>';
    return items.join(u' ');
}

}  // namespace

TEST(ListState, SelectsOnlyWhatItIsToldTo) {
    ListState list;
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    int clicks = 0;
    QObject::connect(&list, &ListState::Click, &list, [&] { ++clicks; });
    struct Step {
        const char* What;
        std::function<void()> Act;
        const char* Expected;
        int Clicks;
    };
    const Step steps[] = {
        {"filling selects nothing",
         [&] {
             list.AddItems({QStringLiteral("b"), QStringLiteral("a")});
         },
         "b a", 0},
        {"the end is behind", [&] { list.AddItem(QStringLiteral("c")); }, "b a c", 0},
        {"setting the index clicks", [&] { list.SetListIndex(1); }, "b <a> c", 1},
        {"setting it again does not", [&] { list.SetListIndex(1); }, "b <a> c", 1},
        {"an item in front moves it", [&] { list.AddItem(QStringLiteral("d"), 0); }, "d b <a> c", 1},
        {"one that goes in front, too", [&] { list.RemoveItem(0); }, "b <a> c", 1},
        {"its own removal selects no neighbour", [&] { list.RemoveItem(1); }, "b c", 1},
        {"a text selects its item", [&] { list.SetText(QStringLiteral("c")); }, "b <c>", 2},
        {"a text that is not there selects nothing, with a click", [&] { list.SetText(QStringLiteral("x")); },
         "b c", 3},
        {"an index outside is none", [&] { list.SetListIndex(7); }, "b c", 3},
        {"removing nothing", [&] { list.RemoveItem(-1); }, "b c", 3},
        {"clearing does not click", [&] { list.SetListIndex(0), list.Clear(); }, "", 4},
    };
    for (const Step& step : steps) {
        step.Act();
        EXPECT_EQ(Picture(list).toStdString(), step.Expected) << step.What;
        EXPECT_EQ(clicks, step.Clicks) << step.What;
    }
}

TEST(ListState, SortsWithoutRegardToCaseAndKeepsTheSelection) {
    ListState list(ListState::Order::Sorted);
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    list.AddItems({QStringLiteral("m"), QStringLiteral("B"), QStringLiteral("a")});
    list.SetText(QStringLiteral("m"));
    list.AddItem(QStringLiteral("b"));
    EXPECT_EQ(Picture(list).toStdString(), "a B b <m>");
    list.AddItems({QStringLiteral("z"), QStringLiteral("A")});
    EXPECT_EQ(Picture(list).toStdString(), "A a B b <m> z");
}

}  // namespace zephrin
