#pragma once

#include <QObject>
#include <QStringList>

/// Plays a user in a program that knows nothing of it: presses, picks and types what a script says.
///
/// A step that finds its control waits for it. A step that waits in vain ends the program with exit code 3
/// and says which one it was.
class Player : public QObject {
 public:
    explicit Player(QStringList script);

 private:
    void Next();
    /// True when the step was done, false when what it needs is not there yet. The next step is due before
    /// this one begins, since a press may run an event loop of its own.
    bool Try(const QString& step);

    QStringList steps;
    int waited = 0;
};
