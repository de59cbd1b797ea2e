#include "platform/controls/GridHeader.h"

#include "platform/controls/Bidi.h"
#include "platform/controls/RecordsetModel.h"

#include <QPainter>
#include <QStyleOptionHeader>

namespace zephrin::controls {

GridHeader::GridHeader(const RecordsetModel& model, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), records(model) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setTextElideMode(Qt::ElideRight);
}

void GridHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
    QHeaderView::initStyleOptionForIndex(option, section);
    if (option->direction == Qt::RightToLeft) option->text = Isolated(option->text);
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    const bool marked = section == records.MarkedColumn();
    painter->save();
    QFont used = painter->font();
    used.setBold(marked || used.bold());
    painter->setFont(used);
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();
    if (!marked) return;
    const int thickness = std::max(2, fontMetrics().height() / 6);
    painter->fillRect(rect.left(), rect.bottom() + 1 - thickness, rect.width() - 1, thickness,
                      palette().highlight());
}

}  // namespace zephrin::controls
