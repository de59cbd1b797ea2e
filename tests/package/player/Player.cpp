#include "Player.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr int stepPause = 20;
constexpr int patience = 60'000 / stepPause;
constexpr int exitCodeInVain = 3;

bool IsReady(const QWidget* widget) {
    return widget && widget->isVisible() && widget->isEnabled();
}

/// The window that takes input, or else any.
QWidgetList Windows() {
    if (QWidget* modal = QApplication::activeModalWidget()) return {modal};
    return QApplication::topLevelWidgets();
}

QWidget* Find(const QString& name) {
    for (QWidget* window : Windows()) {
        if (window->objectName() == name && IsReady(window)) return window;
        const auto found = window->findChildren<QWidget*>(name);
        for (QWidget* widget : found)
            if (IsReady(widget)) return widget;
    }
    return nullptr;
}

void Click(QWidget* widget, const QPoint& where) {
    QTest::mouseClick(widget, Qt::LeftButton, {}, where);
}

bool Press(const QString& name) {
    auto* button = qobject_cast<QAbstractButton*>(Find(name));
    if (button) Click(button, button->rect().center());
    return button;
}

bool Pick(const QString& list, const QString& item) {
    auto* view = qobject_cast<QAbstractItemView*>(Find(list));
    if (!view) return false;
    const QModelIndexList found =
        view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, item, 1, Qt::MatchExactly);
    if (found.isEmpty()) return false;
    view->scrollTo(found.first());
    Click(view->viewport(), view->visualRect(found.first()).center());
    return true;
}

bool OpenTab(const QString& name, int index) {
    auto* tabs = qobject_cast<QTabWidget*>(Find(name));
    if (!tabs || !tabs->isTabEnabled(index)) return false;
    Click(tabs->tabBar(), tabs->tabBar()->tabRect(index).center());
    return true;
}

/// Presses a button of the box in front by its caption.
bool Answer(const QString& caption) {
    const QWidget* box = QApplication::activeModalWidget();
    if (!box) return false;
    const auto buttons = box->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->text().remove(u'&') != caption || !IsReady(button)) continue;
        Click(button, button->rect().center());
        return true;
    }
    return false;
}

/// Types into the box in front.
bool Type(const QString& text) {
    const QWidget* box = QApplication::activeModalWidget();
    auto* line = box ? box->findChild<QLineEdit*>() : nullptr;
    if (line) QTest::keyClicks(line, text);
    return line;
}

bool Close(const QString& name) {
    QWidget* window = Find(name);
    if (window) window->window()->close();
    return window;
}

/// Whatever a control shows as text.
QString TextOf(const QWidget* widget) {
    if (const auto* line = qobject_cast<const QStatusBar*>(widget)) return line->currentMessage();
    if (const auto* table = qobject_cast<const QTableWidget*>(widget))
        return table->item(0, 0) ? table->item(0, 0)->text() : QString();
    for (const char* name : {"plainText", "text"})
        if (const QVariant text = widget->property(name); text.isValid()) return text.toString();
    return {};
}

bool See(const QString& name, const QString& text) {
    const QWidget* widget = Find(name);
    return widget && TextOf(widget).contains(text);
}

}  // namespace

Player::Player(QStringList script) : steps(std::move(script)) {
    QTimer::singleShot(0, this, &Player::Next);
}

void Player::Next() {
    if (steps.isEmpty()) return;
    const QString step = steps.takeFirst();
    QTimer::singleShot(stepPause, this, &Player::Next);
    if (Try(step)) {
        waited = 0;
        return;
    }
    if (++waited > patience) {
        std::fprintf(stderr, "The player waits in vain: %s\n", qPrintable(step));
        std::_Exit(exitCodeInVain);
    }
    // A step that is not ready has run no event loop, so the next one still waits.
    steps.prepend(step);
}

bool Player::Try(const QString& step) {
    const QString verb = step.section(u' ', 0, 0);
    const QString name = step.section(u' ', 1, 1);
    const QString rest = step.section(u' ', 2);
    if (verb == u"press") return Press(name);
    if (verb == u"pick") return Pick(name, rest);
    if (verb == u"tab") return OpenTab(name, rest.toInt());
    if (verb == u"see") return See(name, rest);
    if (verb == u"answer") return Answer(step.section(u' ', 1));
    if (verb == u"type") return Type(step.section(u' ', 1));
    if (verb == u"close") return Close(name);
    return false;
}
