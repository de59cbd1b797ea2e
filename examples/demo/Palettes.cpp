#include "Palettes.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace demo {

namespace {

QPalette DarkPalette() {
    const QColor window(0x2b, 0x2f, 0x36);
    const QColor text(0xe6, 0xe9, 0xef);
    QPalette palette(window);
    palette.setColor(QPalette::Base, QColor(0x1f, 0x22, 0x27));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x2a, 0x30));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x40, 0x49));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0x8f));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb6, 0xd9));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x86, 0x90));
    }
    return palette;
}

}  // namespace

void UseColours(Colours colours) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(colours == Colours::Dark ? DarkPalette()
                                                      : QApplication::style()->standardPalette());
}

bool IsDark() {
    const QPalette palette = QApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

}  // namespace demo
