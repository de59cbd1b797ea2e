#pragma once

#include "platform/ado/providers/files/protocol/Protocol.h"

namespace zephrin::reader {

/// Why a file can't be read, or can't be read any further. The one thing that the readers throw.
struct ReadError {
    ado::files::FailureKind Kind = ado::files::FailureKind::Damaged;
    QString Text;
};

/// The file contradicts itself; `where` says at what.
[[noreturn]] inline void ThrowDamaged(const QString& where) {
    throw ReadError{ado::files::FailureKind::Damaged, QStringLiteral("it is damaged (%1)").arg(where)};
}

}  // namespace zephrin::reader
