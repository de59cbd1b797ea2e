#include "wizard/Icons.h"

#include "resources/Icons.h"

#include <QAbstractButton>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

#include <utility>

namespace zephrin {

namespace {

/// Paints a drawing whose lines are in "currentColor" in the palette's present colour.
class LineIconEngine : public QIconEngine {
 public:
    explicit LineIconEngine(QByteArray svg) : drawing(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        const QColor colour = QGuiApplication::palette().color(group, role);
        QByteArray coloured = drawing;
        coloured.replace("currentColor", colour.name(QColor::HexRgb).toLatin1());
        QSvgRenderer(coloured).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return result;
    }

    QIconEngine* clone() const override { return new LineIconEngine(drawing); }

 private:
    QByteArray drawing;
};

}  // namespace

QIcon LineIcon(const QString& name) {
    QFile file(resources::IconPath(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QIcon(new LineIconEngine(file.readAll()));
}

void SetFace(QAbstractButton* button, const QString& name, const QString& text) {
    const QIcon icon = LineIcon(name);
    button->setIcon(icon);
    if (icon.isNull() && button->text().isEmpty()) button->setText(text);
}

}  // namespace zephrin
