#include "wizard/EveryWindow.h"

#include <QApplication>
#include <QTranslator>

#include <set>

using namespace zephrin;

namespace {

/// Remembers which texts are asked for, and under which class.
class Asked : public QTranslator {
 public:
    QString translate(const char* context, const char* text, const char*, int) const override {
        texts.insert(std::string(context) + ": " + text);
        return {};
    }
    bool isEmpty() const override { return false; }

    mutable std::set<std::string> texts;
};

using Translation = test::EveryWindow;

// A class that lacks its own meta object asks under the name of its base: the tools that gather texts write
// down another one, and a translation made with them is never found.
TEST_F(Translation, TextsAreAskedForUnderTheClassThatHasThem) {
    Asked asked;
    QApplication::installTranslator(&asked);
    Begin();
    ForEach([](QWidget&, const QString&) {});
    QApplication::removeTranslator(&asked);
    for (const std::string& text : asked.texts)
        for (const char* base : {"QObject: ", "QWidget: ", "QDialog: ", "QGroupBox: "})
            EXPECT_NE(text.rfind(base, 0), 0U) << text;
    for (const char* text : {"zephrin::TableTabPage: Select the table", "zephrin::JoinTabPage: Lock Tables",
                             "zephrin::MovePanel: Enter or a double-click moves the row to the other list.",
                             "zephrin::frmZPG: Open Saved Query"})
        EXPECT_TRUE(asked.texts.contains(text)) << text;
}

}  // namespace
