#include "fuzz/Targets.h"

namespace zephrin::fuzz {

void Require(bool holds, const QString& what) {
    if (!holds) throw Broken(what.toStdString());
}

}  // namespace zephrin::fuzz
