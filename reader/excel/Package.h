#pragma once

#include "reader/excel/XmlScanner.h"

#include <QString>

#include <memory>
#include <zip.h>

namespace zephrin::reader::excel {

/// The parts of a workbook that is a zip archive.
class Package {
 public:
    /// Throws ReadError for what can't be opened.
    explicit Package(const QString& path);

    bool Has(const QString& part) const;
    /// A part that is read from its begin. Bytes that differ from what the archive promised end in a
    /// ReadError.
    XmlScanner Open(const QString& part) const;
    /// A small part, whole.
    QByteArray Whole(const QString& part) const;

 private:
    struct Discard {
        void operator()(zip_t* archive) const { zip_discard(archive); }
    };
    std::shared_ptr<zip_file_t> Entry(const QString& part) const;

    std::unique_ptr<zip_t, Discard> archive;
};

}  // namespace zephrin::reader::excel
