#include "resources/Icons.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

using namespace zephrin::resources;

namespace {

// A path that SVG can't read draws nothing at all, silently; so does a name missing from the resource file.
TEST(Icons, EachOneDraws) {
    const QStringList names = IconNames();
    EXPECT_GE(names.size(), 29);
    for (const QString& name : names) {
        QFile file(IconPath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        const QByteArray text = file.readAll();
        EXPECT_EQ(text.contains("currentColor"), name != u"zephrin") << qPrintable(name);

        QSvgRenderer renderer(QByteArray(text).replace("currentColor", "#ff0000"));
        QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        int inked = 0;
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 24; ++x) inked += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
        EXPECT_GT(inked, 15) << qPrintable(name);
    }
}

}  // namespace
