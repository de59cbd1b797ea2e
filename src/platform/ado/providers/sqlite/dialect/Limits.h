#pragma once

namespace zephrin::ado::providers::sqlite {

/// Where statements end to be taken. A pasted text must neither fill the memory nor overflow a small stack,
/// and what the engine would refuse anyway is refused where it stands in the user's text.
namespace Limits {
inline constexpr int StatementCharacters = 1'000'000;
inline constexpr int WrittenBytes = 4'000'000;
/// Levels of tables in parentheses in one another. One of an expression counts as two, a query in an
/// expression as four: so much more of the stack they take, and the engine takes fewer of them.
inline constexpr int Nesting = 100;
/// Levels of the tree that comes of it, in which each operator of a chain is one more.
inline constexpr int TreeHeight = 100;
inline constexpr int Columns = 2000;
inline constexpr int JoinedTables = 64;
inline constexpr int QueriesInUnion = 250;
}  // namespace Limits

}  // namespace zephrin::ado::providers::sqlite
