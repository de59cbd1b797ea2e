#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zephrin::ado {

/// Finds among texts that lie in the order of their bytes, as in an index, those that CompareTexts takes for
/// equal to one, without looking at the others: whoever has read a text asks where to read on.
///
/// Equal texts lie apart there, "ana" far behind "ANA" and "Ana " between others. Each step leaves out all
/// texts that no longer can be equal; what it stops at may be equal and needs to be compared.
class EqualTexts {
 public:
    explicit EqualTexts(std::string_view wanted);

    /// False for texts with which nothing can be left out safely.
    bool CanSearch() const { return searchable; }
    /// The least text behind `text`, by bytes, that may be equal; nothing where none is left.
    std::optional<std::string> Behind(std::string_view text) const;

 private:
    std::optional<std::string> Stepped(std::string_view text, const std::vector<std::size_t>& places,
                                       const std::vector<std::size_t>& counts) const;
    std::optional<char32_t> NextAllowed(char32_t behind, std::size_t weightsBefore) const;
    int Expected(std::size_t index) const;

    std::vector<int> weights;
    /// The wanted text's own characters, each with the weight that it begins with.
    std::vector<std::pair<int, char32_t>> own;
    bool searchable = true;
};

}  // namespace zephrin::ado
