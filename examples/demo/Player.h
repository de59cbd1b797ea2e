#pragma once

#include "Driver.h"

namespace demo {

/// Plays two queries by itself and takes pictures on the way. What it can't do as a user could is an error
/// and ends it.
class Player : public Driver {
 public:
    using Driver::Driver;

    /// Plays to the end and prints statement, rows and events; the exit code of the program.
    int Run();

 private:
    void PlayOneTable();
    void PlayJoin();
    void LimitRows();
    void SortRows();
    void ReportQuery();
};

}  // namespace demo
