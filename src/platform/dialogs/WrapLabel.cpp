#include "platform/dialogs/WrapLabel.h"

#include <QResizeEvent>

namespace zephrin {

WrapLabel::WrapLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

QSize WrapLabel::minimumSizeHint() const {
    const QSize hint = QLabel::minimumSizeHint();
    return {hint.width(), std::max(hint.height(), heightForWidth(std::max(width(), hint.width())))};
}

void WrapLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) updateGeometry();
}

}  // namespace zephrin
