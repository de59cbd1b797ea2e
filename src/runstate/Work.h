#pragma once

#include "platform/ado/Watch.h"

#include <QElapsedTimer>
#include <QString>

#include <memory>

namespace zephrin {

struct ZPGGlobalDeclarations;

/// What the run makes its user wait for, and how far that is.
struct WorkProgress {
    QString What;     ///< a status text: "Running Query .."
    qint64 Rows = 0;  ///< records so far; 0 where none are counted
    qint64 Done = 0;  ///< how much of All, be it records or others
    qint64 All = 0;   ///< 0 where nobody knows
    int Seconds = 0;
};

/// "Running Query .. 12 s, 340,000 records"
QString ProgressText(const WorkProgress& progress);

/// The program around a run that works: what keeps its windows alive meanwhile. A control has one; without it
/// nothing is shown, and nobody can stop.
class WorkSurroundings {
 public:
    virtual ~WorkSurroundings() = default;
    /// Called about every 50 ms. Shows how far the work is once it can be felt, and lets events in, and with
    /// them anybody: the showing may be over behind it. False when somebody wants the work to stop, but for
    /// what the user types and clicks before it is felt.
    virtual bool Breathe(ZPGGlobalDeclarations& state) = 0;
    /// The work has ended, whichever way, be it too short to breathe. May let events in as well.
    virtual void Ended(ZPGGlobalDeclarations& state) = 0;
};

/// The work that a run has in hand. While it is there, nothing else is begun.
struct WorkInHand {
    WorkProgress Progress;
    int Depth = 0;  ///< works that are parts of one another count as one
    bool Felt = false;
    bool StopWanted = false;
    QElapsedTimer Since;
    qint64 LastBreath = 0;  ///< milliseconds behind Since
};

/// One work, from its beginning to its end. Whoever waits for a database or walks through many rows makes one
/// around just that: no box may open while it lives. Behind its end the showing has to be compared, for
/// others were let in.
class Work {
 public:
    static constexpr int FeltAfter = 300;  ///< milliseconds

    Work(ZPGGlobalDeclarations& state, const QString& what);
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

    /// Says what is done from now on.
    void Tell(const QString& what);
    /// Says how much there is to do, in records or in steps of another kind.
    void Expect(qint64 all);
    /// Whether to go on, after so many records or steps; for what doesn't wait for a connection. It may be
    /// called as often as one likes.
    /// @{
    bool GoOn(qint64 rows);
    bool Step(qint64 done);
    /// @}

 private:
    ZPGGlobalDeclarations& state;
    WorkProgress outer;
};

/// A work is under way, and whatever would begin another has to be refused.
bool IsBusy(const ZPGGlobalDeclarations& state);
/// What a refusal says: ErrorNumber::StillExecuting.
ado::Error BusyError(const ZPGGlobalDeclarations& state);
/// Has the work in hand end at the next occasion; nothing without one.
void StopWork(ZPGGlobalDeclarations& state);
/// What the connections of a run ask. The run must outlive them.
ado::Watcher WatcherOf(ZPGGlobalDeclarations& state);

}  // namespace zephrin
