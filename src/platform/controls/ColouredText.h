#pragma once

#include <QRgb>
#include <QTextEdit>

#include <vector>

namespace zephrin::controls {

/// An editable text with stretches in colours of their own. Its text has CR LF line breaks, and positions
/// count in it.
///
/// Colours are no part of the document: setting them costs no undo step, and they move along with what is
/// typed. The box keeps a white ground in dark themes too, since the colours are given and have to stay
/// readable.
class ColouredText : public QTextEdit {
    Q_OBJECT
 public:
    /// A stretch in one colour; later ones are painted over earlier ones. Start counts from 0 in UTF-16
    /// units.
    struct Span {
        int Start = 0;
        int Length = 0;
        QRgb Colour = 0;
        bool operator==(const Span&) const = default;
    };

    explicit ColouredText(QWidget* parent = nullptr);

    /// Shows `text`; what no span covers is black. A text that stands already is only painted anew: caret,
    /// scroll position and undo steps stay. Another text forgets the undo steps.
    void SetText(const QString& text, const std::vector<Span>& spans = {});
    /// What the box shows, with CR LF, character for character.
    QString Text() const;
    void SetBold(bool bold);
    /// The colour that the character at `position` is painted in by rule, whatever the palette makes of it.
    QRgb ColourAt(int position) const;

 Q_SIGNALS:
    /// The user changed the text (typed, pasted, dropped, undid); `text` has CR LF.
    void TextEdited(const QString& text);

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    /// A stretch of the document that is not black; stretches are sorted and don't overlap.
    struct Run {
        int Start;
        int End;
        QRgb Colour;
    };
    void Follow(int position, int removed, int added);
    void Paint(int position, int length);

    std::vector<Run> runs;
    bool setting = false;
};

}  // namespace zephrin::controls
