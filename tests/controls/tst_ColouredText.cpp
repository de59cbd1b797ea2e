#include "platform/controls/ColouredText.h"

#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace zephrin::controls {

namespace {

constexpr QRgb blue = qRgb(0, 0, 255);
constexpr QRgb grey = qRgb(128, 128, 128);

/// The colours of a text as one letter a character: "." is black.
QString Picture(const ColouredText& box) {
    QString picture;
    for (int at = 0; at < box.Text().size(); ++at) {
        const QRgb colour = box.ColourAt(at);
        picture += colour == blue ? u'b' : colour == grey ? u'g' : u'.';
    }
    return picture;
}

int CountPixels(const QImage& image, QRgb colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == colour ? 1 : 0;
    return count;
}

}  // namespace

TEST(ColouredText, ColoursCountALineBreakAsTwo) {
    ColouredText box;
    box.SetText(QStringLiteral("ab\r\ncd\r\n\r\nNOT LIKE"),
                {{4, 2, blue}, {14, 4, grey}, {10, 8, grey}, {17, 9, blue}});
    EXPECT_EQ(box.Text(), QStringLiteral("ab\r\ncd\r\n\r\nNOT LIKE"));
    EXPECT_EQ(Picture(box), QStringLiteral("....bb....gggggggb"));
    EXPECT_EQ(box.toPlainText(), QStringLiteral("ab\ncd\n\nNOT LIKE"));
}

TEST(ColouredText, AStretchOverABreakPaintsBothSides) {
    ColouredText box;
    box.SetText(QStringLiteral("ab\r\ncd"), {{-3, 4, grey}, {1, 4, blue}});
    EXPECT_EQ(Picture(box), QStringLiteral("gbbbb."));
}

TEST(ColouredText, ColoursAreShownExactlyOnAWhiteGround) {
    ColouredText box;
    QFont font = box.font();
    font.setStyleStrategy(QFont::NoAntialias);
    font.setPixelSize(30);
    box.setFont(font);
    box.resize(300, 120);
    box.SetText(QStringLiteral("HHH\r\nHHH"), {{0, 3, blue}});
    const QImage image = box.viewport()->grab().toImage();
    EXPECT_GT(CountPixels(image, blue), 50);
    EXPECT_GT(CountPixels(image, qRgb(0, 0, 0)), 50);
    EXPECT_EQ(image.pixel(image.width() - 3, image.height() - 3), qRgb(255, 255, 255));
}

TEST(ColouredText, TypingReportsCrLfTextAndMovesColours) {
    ColouredText box;
    QSignalSpy edited(&box, &ColouredText::TextEdited);
    box.SetText(QStringLiteral("SELECT a\r\nFROM b"), {{0, 6, blue}, {10, 4, blue}});
    EXPECT_EQ(edited.count(), 0);

    box.moveCursor(QTextCursor::Start);
    QTest::keyClicks(&box, QStringLiteral("x "));
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
    ASSERT_EQ(edited.count(), 4);
    EXPECT_EQ(edited.last().first().toString(), QStringLiteral("x \r\n\r\nSELECT a\r\nFROM b"));
    EXPECT_EQ(Picture(box), QStringLiteral("......bbbbbb....bbbb.."));

    // What is typed inside a word belongs to it; what is deleted takes its colour along.
    box.moveCursor(QTextCursor::NextCharacter);
    QTest::keyClicks(&box, QStringLiteral("E"));
    EXPECT_EQ(Picture(box), QStringLiteral("......bbbbbbb....bbbb.."));
    QTest::keyClick(&box, Qt::Key_Backspace);
    QTest::keyClick(&box, Qt::Key_Delete);
    EXPECT_EQ(box.Text(), QStringLiteral("x \r\n\r\nSLECT a\r\nFROM b"));
    EXPECT_EQ(Picture(box), QStringLiteral("......bbbbb....bbbb.."));
}

TEST(ColouredText, PaintingAnewKeepsUndoAndCaret) {
    ColouredText box;
    box.SetText(QStringLiteral("one"), {});
    QTest::keyClicks(&box, QStringLiteral("x"));
    const QString typed = box.Text();
    const int caret = box.textCursor().position();
    box.SetText(typed, {{0, 1, blue}});
    EXPECT_EQ(box.textCursor().position(), caret);
    EXPECT_EQ(Picture(box), QStringLiteral("b..."));
    box.undo();
    EXPECT_EQ(box.Text(), QStringLiteral("one"));

    // A text of the program's own is no step that the user could undo.
    box.SetText(QStringLiteral("two"), {});
    box.undo();
    EXPECT_EQ(box.Text(), QStringLiteral("two"));
}

TEST(ColouredText, CharactersThatAnEditorLikesToChangeStay) {
    ColouredText box;
    const QString text = QStringLiteral("a\u00a0b\tc \U0001F600 <b>&amp;</b>");
    box.SetText(text, {{2, 1, blue}});
    EXPECT_EQ(box.Text(), text);
    EXPECT_EQ(box.ColourAt(2), blue);
}

}  // namespace zephrin::controls
