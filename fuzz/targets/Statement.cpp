#include "fuzz/Targets.h"
#include "fuzz/targets/Engine.h"

#include <zephrin/ado/Error.h>

namespace zephrin::fuzz {

void FeedStatement(const QByteArray& input) {
    if (input.isEmpty()) return;
    const QString statement = QString::fromUtf8(input.mid(1));
    try {
        Engine::For(static_cast<quint8>(input.front()) % 3).Rows(statement);
    } catch (const ado::Error& error) {
        Require(!error.Description().isEmpty(), "an error says what is wrong");
        Require(error.Position() >= -1 && error.Position() <= statement.size(),
                "an error points into the statement");
    }
}

}  // namespace zephrin::fuzz
