#pragma once

#include "reader/ReadError.h"

#include <functional>
#include <string_view>
#include <vector>

namespace zephrin::reader::excel {

/// Goes through the parts of a workbook that are large: sheets and texts. Qt's reader takes five times as
/// long for them, most of it for texts of sixteen bits that nobody wants. Names come without their prefix;
/// what isn't well formed throws ReadError.
class XmlScanner {
 public:
    /// Fills the room with the next bytes and says how many; 0 at the end.
    using Source = std::function<std::size_t(char* into, std::size_t most)>;
    explicit XmlScanner(Source from);

    enum class Token { Start, End, Text, Finish };
    /// The next one. An element without content is a Start and an End.
    Token Next();

    /// Of Start and End.
    std::string_view Name() const { return name; }
    /// As it is written, until the next token; empty where it is not there. Of Start.
    std::string_view Attribute(std::string_view wanted) const;
    /// Adds the letters of a Text, whatever they were written as.
    void AppendText(std::string& into) const;
    std::string_view RawText() const { return text; }
    static void AppendUnescaped(std::string_view raw, std::string& into);

 private:
    bool Fill();
    std::size_t Find(std::string_view what, std::size_t from);
    std::size_t TagEnd();
    void TakeTag(std::string_view tag);

    Source source;
    std::vector<char> buffer;
    std::size_t at = 0;
    std::size_t end = 0;
    bool isOver = false;
    bool closes = false;
    bool isPlain = false;
    int depth = 0;
    std::string_view name;
    std::string_view rest;
    std::string_view text;
};

}  // namespace zephrin::reader::excel
