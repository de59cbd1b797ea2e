#pragma once

#include "reader/access/PageFile.h"

#include <QByteArray>

namespace zephrin::reader::access {

/// Brings the long value that a cell stands for: it is in the cell itself, in one row of another page, or in
/// a chain of such rows. The bytes stay until the next one is brought, or as long as the cell's.
class LongValues {
 public:
    explicit LongValues(PageFile& of) : file(of) {}
    Span Read(const Span& cell);

 private:
    PageFile& file;
    QByteArray bytes;
};

}  // namespace zephrin::reader::access
