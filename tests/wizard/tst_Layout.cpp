#include "support/CutTexts.h"
#include "wizard/EveryWindow.h"

#include <QApplication>

using namespace zephrin;

namespace {

class Layout : public test::EveryWindow {
 protected:
    ~Layout() override { QApplication::setLayoutDirection(Qt::LayoutDirectionAuto); }
};

struct Language {
    const char* Name;
    int Offset;
};
constexpr Language languages[] = {{"English", 0}, {"French", 200}, {"German", 400}, {"Spanish", 600}};

std::string Lines(const QStringList& cut) {
    return cut.join(u'\n').toStdString();
}

// At its smallest every window shows all of its texts, in each language and direction.
TEST_F(Layout, NoTextIsCutInAnyLanguage) {
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        for (const Language& language : languages) {
            state->gResourceOffset = language.Offset;
            Begin();
            ForEach([&](QWidget& window, const QString& what) {
                window.resize(window.minimumSizeHint());
                QCoreApplication::processEvents();
                // What is left of a screen of 1920 by 1080 at 200 %, beside bars and title.
                EXPECT_LE(window.width(), 960) << qPrintable(what);
                EXPECT_LE(window.height(), 500) << qPrintable(what);
                EXPECT_EQ(Lines(test::CutTexts(window)), std::string())
                    << qPrintable(what) << " in " << language.Name
                    << (direction == Qt::RightToLeft ? ", mirrored" : "");
            });
            End();
        }
    }
}

// A translation may be half as long again as any of ours.
TEST_F(Layout, NoTextIsCutWhenAllAreLonger) {
    Begin();
    ForEach([&](QWidget& window, const QString& what) {
        // The form comes once for each of its tabs.
        if (!window.property("stretched").isValid()) test::StretchCaptions(window);
        window.setProperty("stretched", true);
        QCoreApplication::processEvents();
        window.resize(window.minimumSizeHint());
        QCoreApplication::processEvents();
        EXPECT_EQ(Lines(test::CutTexts(window)), std::string()) << qPrintable(what);
    });
}

}  // namespace
