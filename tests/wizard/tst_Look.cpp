#include "wizard/Look.h"
#include "wizard/OleColour.h"
#include "wizard/ShowControl.h"

#include <QCheckBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

using namespace zephrin;

TEST(Look, ResolvesOleColours) {
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(1, 2, 3));
    palette.setColor(QPalette::Highlight, QColor(4, 5, 6));
    struct Row {
        quint32 Ole;
        QRgb Expected;
    };
    const Row table[] = {
        {0x808080, qRgb(128, 128, 128)}, {0x0000FF, qRgb(255, 0, 0)}, {0xFF8040, qRgb(64, 128, 255)},
        {0x80000005, qRgb(1, 2, 3)},     {0x8000000D, qRgb(4, 5, 6)},
    };
    for (const Row& row : table)
        EXPECT_EQ(OleColour(row.Ole, palette).rgb(), row.Expected) << std::hex << row.Ole;
}

TEST(Look, ReachesLabelsAndCheckBoxesButForTheExceptions) {
    QWidget form;
    const auto add = [&form](auto* widget, const QString& name) {
        widget->setObjectName(name);
        widget->setParent(&form);
        return widget;
    };
    auto* lblTopX = add(new QLabel, QStringLiteral("lblTopX"));
    auto* lblJoinType = add(new QLabel, QStringLiteral("lblJoinType"));
    auto* lblQuestionMark = add(new QLabel, QStringLiteral("lblQuestionMark"));
    auto* chkDistinct = add(new QCheckBox, QStringLiteral("chkDistinct"));
    auto* chkLockJoinTables = add(new QCheckBox, QStringLiteral("chkLockJoinTables"));
    auto* cmdExit = add(new QPushButton, QStringLiteral("cmdExit"));
    RunOptions options;
    options.gLabelBackColor = 0x0000FF;
    options.gLabelForeColor = 0x00FF00;
    QFont font = form.font();
    font.setPointSize(font.pointSize() + 7);
    ApplyLook(&form, options, font);
    struct Row {
        const QWidget* Widget;
        bool Coloured;
        bool Font;
    };
    const Row table[] = {
        {lblTopX, true, true},     {lblJoinType, false, false},       {lblQuestionMark, false, false},
        {chkDistinct, true, true}, {chkLockJoinTables, false, false}, {cmdExit, false, true},
    };
    for (const Row& row : table) {
        const std::string name = row.Widget->objectName().toStdString();
        EXPECT_EQ(row.Widget->palette().color(QPalette::Window) == QColor(255, 0, 0), row.Coloured) << name;
        EXPECT_EQ(row.Widget->palette().color(QPalette::WindowText) == QColor(0, 255, 0), row.Coloured)
            << name;
        EXPECT_EQ(row.Widget->font().pointSize() == font.pointSize(), row.Font) << name;
    }
}

TEST(Look, AStyleSheetHasTheLastWord) {
    QWidget form;
    form.setStyleSheet(
        QStringLiteral("QLabel { background: transparent } QPushButton { font-weight: bold }"));
    QLabel lblTopX(&form);
    lblTopX.setObjectName(QStringLiteral("lblTopX"));
    QPushButton cmdExit(&form);
    // A control that was asked for its size is styled before the form gets its look.
    for (QWidget* widget : {static_cast<QWidget*>(&lblTopX), static_cast<QWidget*>(&cmdExit)})
        widget->ensurePolished();
    ApplyLook(&form, RunOptions(), form.font());
    EXPECT_FALSE(lblTopX.autoFillBackground());
    EXPECT_TRUE(cmdExit.font().bold());
}

TEST(Look, CaptionsShowEveryCharacter) {
    QGroupBox frame;
    SetCaption(&frame, QStringLiteral("Where R&D = 1"));
    EXPECT_EQ(frame.title(), QStringLiteral("Where R&&D = 1"));
    QLabel label;
    SetCaption(&label, QStringLiteral("<b>R&D</b>"));
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(label.text(), QStringLiteral("<b>R&D</b>"));
}

TEST(Look, ToolTipsAreNoMarkUp) {
    EXPECT_EQ(PlainToolTip(QStringLiteral("[Orders].[Date] < 5")), QStringLiteral("[Orders].[Date] < 5"));
    EXPECT_EQ(PlainToolTip(QStringLiteral("<b>x</b>")), QStringLiteral("<span>&lt;b&gt;x&lt;/b&gt;</span>"));
}

TEST(Look, ADesignToolTipStandsInForAnEmptyOne) {
    QPushButton button;
    SetDesignToolTip(&button, QStringLiteral("Add Criteria"));
    ButtonState state;
    ShowControl(&button, state);
    EXPECT_EQ(button.toolTip(), QStringLiteral("Add Criteria"));
    state.ToolTipText = QStringLiteral("[a].[b]");
    ShowControl(&button, state);
    EXPECT_EQ(button.toolTip(), QStringLiteral("[a].[b]"));
}

}  // namespace
