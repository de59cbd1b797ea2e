#pragma once

#include <string_view>
#include <vector>

struct UCollationElements;

namespace zephrin::ado {

/// The order of texts of a server's default collation: punctuation, digits, letters, each with its accents
/// behind it and without regard to case; blanks at the end don't count. Texts are UTF-8. Negative, 0 or
/// positive as `left` comes before `right`, is the same, or comes behind it.
int CompareTexts(std::string_view left, std::string_view right);

/// Writes texts as keys: compared byte by byte, keys have the order of CompareTexts. Whoever compares a text
/// often makes its key once. One writer works for one thread at a time.
class TextKeyWriter {
 public:
    TextKeyWriter() = default;
    ~TextKeyWriter();
    TextKeyWriter(const TextKeyWriter&) = delete;
    TextKeyWriter& operator=(const TextKeyWriter&) = delete;

    void Append(std::string_view text, std::vector<char>& key);

 private:
    void AppendByElements(std::string_view text, std::vector<char>& key);

    UCollationElements* elements = nullptr;
    std::vector<char> accents;
};

}  // namespace zephrin::ado
