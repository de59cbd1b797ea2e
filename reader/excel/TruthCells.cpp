#include "reader/excel/TruthCells.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <algorithm>
#include <optional>

namespace zephrin::reader::excel {

namespace {

constexpr quint32 LastSector = 0xfffffffa;

/// Bytes that answer 0 beyond their end: what is found there is no record.
class Bytes {
 public:
    explicit Bytes(QByteArray all) : bytes(std::move(all)) {}
    qsizetype Size() const { return bytes.size(); }
    quint32 Byte(qsizetype at) const { return at >= 0 && at < bytes.size() ? uchar(bytes[at]) : 0; }
    quint32 Short(qsizetype at) const { return Byte(at) | Byte(at + 1) << 8; }
    quint32 Long(qsizetype at) const { return Short(at) | Short(at + 2) << 16; }
    QByteArray Part(qsizetype at, qsizetype count) const { return bytes.mid(at, count); }

 private:
    QByteArray bytes;
};

/// The file in a file, in which an old workbook lies.
class Compound {
 public:
    explicit Compound(QByteArray all)
        : file(std::move(all)), sector(qsizetype(1) << qBound(9u, file.Short(30), 12u)) {
        QList<quint32> tables;
        for (int entry = 0; entry < 109; ++entry) tables << file.Long(76 + entry * 4);
        quint32 more = file.Long(68);
        while (more < LastSector && tables.size() < Sectors()) {
            for (qsizetype at = 0; at + 4 < sector; at += 4) tables << file.Long(Place(more) + at);
            more = file.Long(Place(more) + sector - 4);
        }
        for (const quint32 table : std::as_const(tables))
            if (table < LastSector)
                for (qsizetype at = 0; at < sector; at += 4) next << file.Long(Place(table) + at);
    }

    std::optional<QByteArray> Stream(const char16_t* name) const {
        const Bytes directory(Chain(file.Long(48)));
        const QString wanted = QString::fromUtf16(name);
        QByteArray small;
        for (qsizetype entry = 0; entry + 128 <= directory.Size(); entry += 128) {
            const qsizetype length = std::clamp<qsizetype>(qsizetype(directory.Short(entry + 64)) / 2 - 1, 0, 31);
            const QByteArray utf16 = directory.Part(entry, length * 2);
            const quint32 start = directory.Long(entry + 116);
            const qsizetype size = directory.Long(entry + 120);
            if (directory.Byte(entry + 66) == 5) small = Chain(start);
            if (QString::fromUtf16(reinterpret_cast<const char16_t*>(utf16.constData()), length) != wanted)
                continue;
            return size < qsizetype(file.Long(56)) ? SmallChain(start, Bytes(small)).left(size)
                                                   : Chain(start).left(size);
        }
        return std::nullopt;
    }

 private:
    qsizetype Sectors() const { return file.Size() / sector + 1; }
    qsizetype Place(quint32 number) const { return (qsizetype(number) + 1) * sector; }
    QByteArray Chain(quint32 number) const {
        QByteArray all;
        for (qsizetype count = 0; number < LastSector && count < Sectors(); ++count) {
            all += file.Part(Place(number), sector);
            number = number < quint32(next.size()) ? next[number] : LastSector;
        }
        return all;
    }
    QByteArray SmallChain(quint32 number, const Bytes& from) const {
        constexpr qsizetype small = 64;
        const Bytes table(Chain(file.Long(60)));
        QByteArray all;
        for (qsizetype count = 0; number < LastSector && count <= from.Size() / small; ++count) {
            all += from.Part(qsizetype(number) * small, small);
            number = qsizetype(number) * 4 < table.Size() ? table.Long(qsizetype(number) * 4) : LastSector;
        }
        return all;
    }

    Bytes file;
    qsizetype sector;
    QList<quint32> next;
};

enum Record { Formula = 0x0006, EndOfSheet = 0x000a, Sheet = 0x0085, TruthOrError = 0x0205, Begin = 0x0809 };

TruthCells CellsOf(const Bytes& book, qsizetype at) {
    TruthCells cells;
    for (int depth = 0; at + 4 <= book.Size(); at += 4 + qsizetype(book.Short(at + 2))) {
        const quint32 record = book.Short(at);
        const qsizetype data = at + 4;
        const quint32 key = book.Short(data) << 16 | (book.Short(data + 2) & 0xffff);
        if (record == Begin) ++depth;
        if (record == EndOfSheet && --depth <= 0) break;
        if (depth != 1) continue;
        if (record == TruthOrError && book.Byte(data + 7) == 0) cells.insert(key, book.Byte(data + 6) != 0);
        // A formula whose result is no number says of which kind it is.
        if (record == Formula && book.Short(data + 12) == 0xffff && book.Byte(data + 6) == 1)
            cells.insert(key, book.Byte(data + 8) != 0);
    }
    return cells;
}

}  // namespace

QHash<QString, TruthCells> FindTruthCells(const QString& path) {
    QHash<QString, TruthCells> sheets;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return sheets;
    const std::optional<QByteArray> stream = Compound(file.readAll()).Stream(u"Workbook");
    if (!stream) return sheets;
    const Bytes book(*stream);
    for (qsizetype at = 0; at + 4 <= book.Size(); at += 4 + qsizetype(book.Short(at + 2))) {
        if (book.Short(at) == EndOfSheet) break;
        if (book.Short(at) != Sheet) continue;
        const qsizetype data = at + 4;
        const qsizetype length = book.Byte(data + 6);
        const bool isWide = (book.Byte(data + 7) & 1) != 0;
        const QByteArray name = book.Part(data + 8, isWide ? length * 2 : length);
        sheets.insert(
            isWide ? QString::fromUtf16(reinterpret_cast<const char16_t*>(name.constData()), name.size() / 2)
                   : QString::fromLatin1(name),
            CellsOf(book, book.Long(data)));
    }
    return sheets;
}

}  // namespace zephrin::reader::excel
