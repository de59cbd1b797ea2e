#pragma once

#include "reader/access/PageFile.h"

#include <QByteArray>

#include <iconv.h>

namespace zephrin::reader::access {

/// Turns the texts of a file into UTF-8: sixteen bits a letter, or their shortened form, and in the oldest
/// format the code page of the column.
class TextDecoder {
 public:
    /// `codePage` 0 stands for texts of sixteen bits.
    explicit TextDecoder(int codePage);
    ~TextDecoder();
    TextDecoder(const TextDecoder&) = delete;
    TextDecoder& operator=(const TextDecoder&) = delete;

    /// How many bytes Decode() may write.
    static qsizetype Most(const Span& text) { return qsizetype(text.Size) * 3 + 8; }
    /// Writes the text and returns how many bytes it has.
    qsizetype Decode(const Span& text, char* into);
    QByteArray Decoded(const Span& text);

 private:
    qsizetype FromCodePage(const Span& text, char* into);

    iconv_t converter = iconv_t(-1);
    bool isWide;
};

}  // namespace zephrin::reader::access
