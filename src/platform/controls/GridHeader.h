#pragma once

#include <QHeaderView>

namespace zephrin::controls {

class RecordsetModel;

/// The heads of a pane's columns. A click is reported and does nothing else; the marked column is underlined.
class GridHeader : public QHeaderView {
    Q_OBJECT
 public:
    GridHeader(const RecordsetModel& records, QWidget* parent);

 protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

 private:
    const RecordsetModel& records;
};

}  // namespace zephrin::controls
