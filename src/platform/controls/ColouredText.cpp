#include "platform/controls/ColouredText.h"

#include "platform/controls/DocumentText.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>

namespace zephrin::controls {

namespace {

constexpr QRgb black = qRgb(0, 0, 0);

/// A dark theme must not lay its own ground under given colours.
QPalette LightPalette(QPalette palette) {
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Base, Qt::white);
        palette.setColor(group, QPalette::Text, Qt::black);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xf0f0f0));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x606060));
    return palette;
}

bool IsBreakAt(const QString& text, qsizetype at) {
    return text.at(at) == u'\r' && at + 1 < text.size() && text.at(at + 1) == u'\n';
}

/// The colour of each character once all stretches are painted in their order.
std::vector<QRgb> Flatten(qsizetype size, const std::vector<ColouredText::Span>& spans) {
    std::vector<QRgb> flat(static_cast<std::size_t>(size), black);
    for (const ColouredText::Span& each : spans) {
        const qsizetype start = std::clamp<qsizetype>(each.Start, 0, size);
        const qsizetype end = std::clamp<qsizetype>(qsizetype{each.Start} + each.Length, start, size);
        std::fill(flat.begin() + start, flat.begin() + end, each.Colour | 0xff000000U);
    }
    return flat;
}

}  // namespace

ColouredText::ColouredText(QWidget* parent) : QTextEdit(parent) {
    setPalette(LightPalette(QGuiApplication::palette()));
    setAcceptRichText(false);
    setTabChangesFocus(true);
    connect(document(), &QTextDocument::contentsChange, this, &ColouredText::Follow);
    connect(this, &QTextEdit::textChanged, this, [this] {
        if (!setting) Q_EMIT TextEdited(Text());
    });
}

QString ColouredText::Text() const {
    return DocumentText(*document());
}

void ColouredText::SetBold(bool bold) {
    if (font().bold() == bold) return;
    QFont changed = font();
    changed.setBold(bold);
    setFont(changed);
}

void ColouredText::SetText(const QString& text, const std::vector<Span>& spans) {
    const QScopedValueRollback guard(setting, true);
    runs.clear();
    const std::vector<QRgb> flat = Flatten(text.size(), spans);
    int position = 0;
    for (qsizetype at = 0; at < text.size(); ++at, ++position) {
        const QRgb colour = flat[static_cast<std::size_t>(at)];
        if (colour != black) {
            if (!runs.empty() && runs.back().End == position && runs.back().Colour == colour)
                ++runs.back().End;
            else
                runs.push_back({position, position + 1, colour});
        }
        if (IsBreakAt(text, at)) ++at;
    }
    if (text == Text()) {
        Paint(0, position);
        return;
    }
    // One edit, in which Follow paints: the document is laid out once, and its scroll bar does not come and
    // go.
    const int scrolled = verticalScrollBar()->value();
    const int caret = textCursor().position();
    document()->setUndoRedoEnabled(false);
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.insertText(text);
    document()->setUndoRedoEnabled(true);
    all.setPosition(std::min(caret, document()->characterCount() - 1));
    setTextCursor(all);
    verticalScrollBar()->setValue(scrolled);
}

QRgb ColouredText::ColourAt(int position) const {
    const QString text = Text();
    int inDocument = 0;
    for (qsizetype at = 0; at < position && at < text.size(); ++at, ++inDocument)
        if (IsBreakAt(text, at) && at + 1 < position) ++at;
    if (position > 0 && position < text.size() && IsBreakAt(text, position - 1)) --inDocument;
    for (const Run& run : runs)
        if (run.Start <= inDocument && inDocument < run.End) return run.Colour;
    return black;
}

/// Moves the colours along with an edit; what is typed inside a stretch belongs to it.
void ColouredText::Follow(int position, int removed, int added) {
    if (setting) {
        Paint(0, document()->characterCount());
        return;
    }
    const int end = position + removed;
    for (Run& run : runs) {
        if (run.Start >= end)
            run.Start += added - removed;
        else if (run.Start > position)
            run.Start = position + added;
        if (run.End > position) run.End = run.End >= end ? run.End + added - removed : position;
    }
    std::erase_if(runs, [](const Run& run) { return run.End <= run.Start; });
    Paint(position, added);
}

/// Gives every block that touches the stretch its colours.
void ColouredText::Paint(int position, int length) {
    const QTextBlock end = document()->findBlock(position + length).next();
    auto run = runs.begin();
    for (QTextBlock block = document()->findBlock(position); block.isValid() && block != end;
         block = block.next()) {
        const int blockEnd = block.position() + block.length();
        while (run != runs.end() && run->End <= block.position()) ++run;
        QList<QTextLayout::FormatRange> ranges;
        for (auto each = run; each != runs.end() && each->Start < blockEnd; ++each) {
            QTextLayout::FormatRange range;
            range.start = std::max(each->Start - block.position(), 0);
            range.length = std::min(each->End, blockEnd) - block.position() - range.start;
            range.format.setForeground(QColor(each->Colour));
            ranges.append(range);
        }
        if (block.layout()->formats() == ranges) continue;
        block.layout()->setFormats(ranges);
        document()->markContentsDirty(block.position(), block.length());
    }
}

void ColouredText::keyPressEvent(QKeyEvent* event) {
    // The editor's own answer is a line separator, which no database takes for a line break.
    if (event == QKeySequence::InsertLineSeparator && !isReadOnly()) {
        textCursor().insertBlock();
        event->accept();
        return;
    }
    QTextEdit::keyPressEvent(event);
}

}  // namespace zephrin::controls
