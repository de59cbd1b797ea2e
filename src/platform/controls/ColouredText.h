#pragma once

#include <QRgb>
#include <QTextEdit>

#include <memory>
#include <vector>

namespace zephrin::controls {

class ColouredTextPrivate;

/// An editable text with stretches in colours of their own. Its text has CR LF line breaks, and positions count in it.
class ColouredText : public QTextEdit {
    Q_OBJECT
 public:
    /// A stretch in one colour; later ones are painted over earlier ones. Start counts from 0 in UTF-16 units.
    struct Span {
        int Start = 0;
        int Length = 0;
        QRgb Colour = 0;
        bool operator==(const Span&) const = default;
    };

    explicit ColouredText(QWidget* parent = nullptr);
    ~ColouredText() override;

    /// Shows `text`. The same text with the same spans again changes nothing, the caret included.
    void SetText(const QString& text, const std::vector<Span>& spans = {});
    /// What the box shows, with CR LF.
    QString Text() const;
    void SetBold(bool bold);
    /// The colour that the character at `position` is painted in by rule, whatever the palette makes of it.
    QRgb ColourAt(int position) const;

 Q_SIGNALS:
    /// The user changed the text; `text` has CR LF.
    void TextEdited(const QString& text);

 private:
    std::unique_ptr<ColouredTextPrivate> d;
};

}  // namespace zephrin::controls
