#include "reader/Source.h"
#include "reader/access/AccessSource.h"
#include "reader/excel/XlsSource.h"
#include "reader/excel/XlsxSource.h"

#include <QFile>

namespace zephrin::reader {

using ado::files::FailureKind;
using ado::files::FileKind;

namespace {

/// What a file begins with says what it is.
bool IsZip(const QByteArray& head) {
    return head.startsWith("PK\x03\x04") || head.startsWith("PK\x05\x06");
}
bool IsOldWorkbook(const QByteArray& head) {
    return head.startsWith("\xd0\xcf\x11\xe0") || head.startsWith(QByteArray("\x09\x00\x04\x00", 4)) ||
           head.startsWith(QByteArray("\x09\x02\x06\x00", 4)) ||
           head.startsWith(QByteArray("\x09\x04\x06\x00", 4)) || head.startsWith(QByteArray("\x09\x08", 2));
}

}  // namespace

std::unique_ptr<Source> OpenSource(const ado::files::Request& request) {
    QFile file(request.Path);
    if (!file.open(QIODevice::ReadOnly)) throw ReadError{FailureKind::Unreadable, file.errorString()};
    const QByteArray head = file.read(8);
    const bool isWorkbook = IsZip(head) || IsOldWorkbook(head);
    if (request.Kind == FileKind::Workbook && !isWorkbook)
        throw ReadError{FailureKind::WrongKind, head.isEmpty()
                                                    ? QStringLiteral("it is empty")
                                                    : QStringLiteral("it is not an Excel workbook")};
    if (request.Kind == FileKind::Database || !isWorkbook)
        return std::make_unique<access::AccessSource>(request.Path, request.Password);
    if (IsZip(head)) return std::make_unique<excel::XlsxSource>(request);
    return std::make_unique<excel::XlsSource>(request);
}

}  // namespace zephrin::reader
