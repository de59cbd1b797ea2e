#pragma once

#include <QByteArray>
#include <QString>

namespace zephrin::fuzz {

/// An input as a row of choices. Behind its end every choice is the first one, so that any input makes
/// something whole.
class Choices {
 public:
    explicit Choices(const QByteArray& bytes) : input(bytes) {}

    bool AtEnd() const { return at >= input.size(); }
    /// A number from 0 up to `count` - 1.
    int Below(int count);
    bool Flip() { return Below(2) == 1; }
    /// Any number of 64 bits, small ones more often.
    qint64 Number();
    QByteArray Bytes(int most);
    /// Any text, half surrogate pairs and control characters too.
    QString Text(int most);

 private:
    const QByteArray input;
    qsizetype at = 0;
};

}  // namespace zephrin::fuzz
