#include "reader/excel/Package.h"

#include <QFile>

namespace zephrin::reader::excel {

using ado::files::FailureKind;

namespace {

/// A description of a workbook is never so long.
constexpr zip_int64_t LongestWhole = 64 << 20;

}  // namespace

Package::Package(const QString& path) {
    int error = 0;
    archive.reset(zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &error));
    if (!archive) throw ReadError{FailureKind::Damaged, QStringLiteral("it is damaged (its list of parts)")};
}

bool Package::Has(const QString& part) const {
    return zip_name_locate(archive.get(), part.toUtf8().constData(), ZIP_FL_NOCASE) >= 0;
}

std::shared_ptr<zip_file_t> Package::Entry(const QString& part) const {
    const zip_int64_t index = zip_name_locate(archive.get(), part.toUtf8().constData(), ZIP_FL_NOCASE);
    if (index < 0) ThrowDamaged(QStringLiteral("part %1 is not there").arg(part));
    zip_file_t* const open = zip_fopen_index(archive.get(), zip_uint64_t(index), 0);
    if (!open) ThrowDamaged(QStringLiteral("part %1 can't be opened").arg(part));
    return {open, [](zip_file_t* file) { zip_fclose(file); }};
}

XmlScanner Package::Open(const QString& part) const {
    return XmlScanner([file = Entry(part), part](char* into, std::size_t most) {
        const zip_int64_t got = zip_fread(file.get(), into, most);
        if (got < 0) ThrowDamaged(QStringLiteral("part %1").arg(part));
        return std::size_t(got);
    });
}

QByteArray Package::Whole(const QString& part) const {
    const std::shared_ptr<zip_file_t> file = Entry(part);
    QByteArray bytes;
    for (;;) {
        const qsizetype have = bytes.size();
        bytes.resize(have + 65'536);
        const zip_int64_t got = zip_fread(file.get(), bytes.data() + have, 65'536);
        if (got < 0 || have > LongestWhole) ThrowDamaged(QStringLiteral("part %1").arg(part));
        bytes.truncate(have + got);
        if (got == 0) return bytes;
    }
}

}  // namespace zephrin::reader::excel
