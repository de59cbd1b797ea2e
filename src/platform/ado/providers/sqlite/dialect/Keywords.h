#pragma once

#include <QString>

namespace zephrin::ado::providers::sqlite {

/// True for a word that no dialect takes for a name unless it stands in brackets.
bool IsReserved(const QString& word);

}  // namespace zephrin::ado::providers::sqlite
