#pragma once

#include <QLabel>

namespace zephrin {

/// A label of plain text in several lines. Where a window may be made smaller than its texts, the toolkit's
/// own label loses lines: layouts ask it for the height that it would have in its favourite width. This one
/// asks for the height that it needs in the width that it has.
class WrapLabel : public QLabel {
    Q_OBJECT
 public:
    explicit WrapLabel(const QString& text = {}, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

 protected:
    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace zephrin
