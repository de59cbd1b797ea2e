#include "platform/controls/Splitter.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace zephrin::controls {

namespace {

TEST(Splitter, ItsHandlesMoveByKey) {
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        Splitter splitter(Qt::Horizontal);
        splitter.setLayoutDirection(direction);
        splitter.SetHandleName(QStringLiteral("Width"));
        splitter.setChildrenCollapsible(false);
        for (int i = 0; i < 2; ++i) {
            auto* half = new QWidget;
            half->setMinimumWidth(50);
            splitter.addWidget(half);
        }
        splitter.resize(400, 100);
        splitter.setSizes({200, 200});
        splitter.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&splitter));
        QWidget* handle = splitter.handle(1);
        EXPECT_TRUE(handle->focusPolicy() & Qt::TabFocus);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(handle)->text(QAccessible::Name),
                  QStringLiteral("Width"));

        const int start = handle->x();
        QTest::keyClick(handle, Qt::Key_Right);
        const int step = handle->x() - start;
        EXPECT_GT(step, 0);
        QTest::keyClick(handle, Qt::Key_Left);
        EXPECT_EQ(handle->x(), start);
        QTest::keyClick(handle, Qt::Key_Home);
        EXPECT_EQ(handle->x(), 50);
        QTest::keyClick(handle, Qt::Key_End);
        EXPECT_EQ(handle->x() + handle->width(), 350);
    }
}

}  // namespace

}  // namespace zephrin::controls
