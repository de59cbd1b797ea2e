#include "wizard/EscapeWatch.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace zephrin;

namespace {

TEST(EscapeWatch, DropsWhateverIsNotEscape) {
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EscapeWatch watch;
    QApplication::postEvent(&window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier));
    bool closed = true;
    QTimer::singleShot(0, &window, [&] { closed = window.close(); });
    EXPECT_FALSE(watch.Pressed());
    EXPECT_FALSE(closed);
    EXPECT_TRUE(window.isVisible());
    QApplication::postEvent(&window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
    EXPECT_TRUE(watch.Pressed());
    EXPECT_TRUE(watch.Pressed()) << "the wish stands until the operation ends";
    EXPECT_TRUE(window.close());
}

}  // namespace
