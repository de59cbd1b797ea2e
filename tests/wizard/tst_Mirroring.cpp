#include "platform/controls/DataGrid.h"
#include "runstate/ListState.h"
#include "wizard/ListBox.h"

#include <zephrin/ado/Recordset.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QStringListModel>
#include <QTableView>

#include <cmath>
#include <gtest/gtest.h>

using namespace zephrin;

namespace {

const QString name = QStringLiteral("[Order Details].[Price] <= 5");

/// What is painted in `area`, without the ground around it: the same for one text wherever it stands.
QImage Ink(QWidget& widget, const QRect& area) {
    const QImage whole = widget.grab(area).toImage().convertToFormat(QImage::Format_RGB32);
    QRect ink;
    for (int y = 0; y < whole.height(); ++y)
        for (int x = 0; x < whole.width(); ++x)
            if (qGray(whole.pixel(x, y)) < 140) ink |= QRect(x, y, 1, 1);
    return whole.copy(ink);
}

/// How far two pictures are apart, 0 for the same, about 0.6 for other texts. A text that ends at another
/// fraction of a pixel has other greys at its edges: what is compared is darkness over a few pixels.
double Distance(const QImage& one, const QImage& other) {
    if (one.isNull() || other.isNull()) return 1;
    const QSize coarse(one.width() / 4, std::max(1, one.height() / 4));
    const QImage a = one.scaled(coarse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage b = other.scaled(coarse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double apart = 0, dark = 0;
    for (int y = 0; y < coarse.height(); ++y) {
        for (int x = 0; x < coarse.width(); ++x) {
            apart += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
            dark += 255 - qGray(a.pixel(x, y));
        }
    }
    return dark > 0 ? apart / dark : 1;
}

QImage FirstRow(QAbstractItemView& list, Qt::LayoutDirection direction) {
    list.setLayoutDirection(direction);
    list.resize(400, 60);
    const QRect row = list.visualRect(list.model()->index(0, 0));
    return Ink(*list.viewport(), row.adjusted(2, 2, -2, -2));
}

TEST(Mirroring, NamesAndOperatorsReadTheSameInLists) {
    ListState state;
    state.AddItems({name});
    ListBox list(QStringLiteral("lst"));
    list.SetItems(&state);
    const QImage expected = FirstRow(list, Qt::LeftToRight);
    EXPECT_GT(expected.width(), 100);
    EXPECT_LT(Distance(expected, FirstRow(list, Qt::RightToLeft)), 0.3);

    // A list of the toolkit's own swaps the parts: what is compared here does show it.
    QStringListModel items({name});
    QListView plain;
    plain.setModel(&items);
    EXPECT_GT(Distance(expected, FirstRow(plain, Qt::RightToLeft)), 0.4);
}

TEST(Mirroring, NamesAndOperatorsReadTheSameInGrids) {
    const auto rows = std::make_shared<ado::Recordset>();
    rows->Append(name, ado::DataType::VarChar, 50);
    rows->Open();
    rows->AddNew();
    rows->SetValue(0, name);
    rows->Update();
    QList<QImage> heads, cells;
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        controls::DataGrid grid;
        grid.setLayoutDirection(direction);
        grid.SetDataSource(rows);
        grid.SetColumnWidth(0, 320);
        grid.resize(500, 200);
        grid.show();
        QCoreApplication::processEvents();
        QTableView* pane = grid.Pane(0);
        pane->clearSelection();
        pane->setCurrentIndex(QModelIndex());
        cells << Ink(*pane->viewport(), pane->visualRect(pane->model()->index(0, 0)).adjusted(3, 3, -3, -3));
        QHeaderView* header = pane->horizontalHeader();
        const QRect head(header->sectionViewportPosition(0), 0, header->sectionSize(0), header->height());
        heads << Ink(*header->viewport(), head.adjusted(3, 3, -3, -3));
    }
    EXPECT_GT(cells.first().width(), 100);
    EXPECT_LT(Distance(cells.first(), cells.last()), 0.3);
    EXPECT_GT(heads.first().width(), 100);
    EXPECT_LT(Distance(heads.first(), heads.last()), 0.3);
}

}  // namespace
