#pragma once

#include "runstate/FormState.h"

namespace zephrin {

/// The application's pointer as the wizard sets it: one value, not a stack. What is left of it goes with the
/// object.
class Hourglass {
 public:
    Hourglass() = default;
    ~Hourglass() { Show(MousePointer::Default); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

    void Show(MousePointer pointer);
    bool IsHourglass() const { return shown == MousePointer::Hourglass; }

 private:
    MousePointer shown = MousePointer::Default;
};

}  // namespace zephrin
