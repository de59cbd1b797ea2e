#include "platform/excel/ZipFile.h"

#include <zephrin/ado/Error.h>

#include <QFile>

#include <algorithm>
#include <cstring>
#include <optional>
#include <zip.h>

namespace zephrin::excel {

namespace {

/// Fast and still half the size of a stored archive: the rows of a query compress well at any level.
constexpr int CompressionLevel = 3;

[[noreturn]] void Fail(const QString& text) {
    throw ado::Error(ado::ErrorNumber::ProviderFailed,
                     QStringLiteral("The workbook could not be written: %1").arg(text),
                     QStringLiteral("Excel export"));
}

}  // namespace

/// A streamed entry. libzip calls back from C, so an error waits here until Commit can throw it.
struct ZipFile::Stream {
    std::function<PieceReader()> Start;
    PieceReader Next;
    QByteArray Piece;
    qsizetype At = 0;
    std::optional<ado::Error> Failure;

    zip_int64_t Read(char* out, zip_uint64_t length) {
        zip_uint64_t filled = 0;
        while (filled < length) {
            if (At == Piece.size()) {
                Piece = Next();
                At = 0;
                if (Piece.isEmpty()) break;
            }
            const auto count =
                std::min<zip_uint64_t>(length - filled, static_cast<zip_uint64_t>(Piece.size() - At));
            std::memcpy(out + filled, Piece.constData() + At, count);
            At += static_cast<qsizetype>(count);
            filled += count;
        }
        return static_cast<zip_int64_t>(filled);
    }

    zip_int64_t Answer(void* data, zip_uint64_t length, zip_source_cmd_t command) {
        switch (command) {
            case ZIP_SOURCE_OPEN:
                Next = Start();
                Piece.clear();
                At = 0;
                return 0;
            case ZIP_SOURCE_READ:
                return Read(static_cast<char*>(data), length);
            case ZIP_SOURCE_CLOSE:
                Next = nullptr;
                return 0;
            case ZIP_SOURCE_STAT:
                zip_stat_init(static_cast<zip_stat_t*>(data));
                return sizeof(zip_stat_t);
            case ZIP_SOURCE_ERROR: {
                const int codes[] = {ZIP_ER_INTERNAL, 0};
                std::memcpy(data, codes, sizeof codes);
                return sizeof codes;
            }
            case ZIP_SOURCE_FREE:
                return 0;
            case ZIP_SOURCE_SUPPORTS:
                return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                                      ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
            default:
                return -1;
        }
    }

    static zip_int64_t Callback(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) {
        auto& stream = *static_cast<Stream*>(self);
        try {
            return stream.Answer(data, length, command);
        } catch (const ado::Error& error) {
            stream.Failure = error;
            return -1;
        }
    }
};

void ZipFile::Discard::operator()(struct zip* open) const {
    zip_discard(open);
}

ZipFile::ZipFile(const QString& path, Begin begin) {
    int code = 0;
    const int flags = begin == Begin::Afresh ? ZIP_CREATE | ZIP_TRUNCATE : ZIP_CREATE;
    archive.reset(zip_open(QFile::encodeName(path).constData(), flags, &code));
    if (archive) return;
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const QString text = QString::fromLocal8Bit(zip_error_strerror(&error));
    zip_error_fini(&error);
    Fail(text);
}

ZipFile::~ZipFile() = default;

void ZipFile::AddSource(const QByteArray& name, void* raw) {
    auto* source = static_cast<zip_source_t*>(raw);
    if (!source) Fail(QString::fromLocal8Bit(zip_strerror(archive.get())));
    const zip_int64_t index = zip_file_add(archive.get(), name.constData(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        Fail(QString::fromLocal8Bit(zip_strerror(archive.get())));
    }
    zip_set_file_compression(archive.get(), static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE,
                             CompressionLevel);
}

void ZipFile::Add(const QByteArray& name, const QByteArray& content) {
    contents.push_back(std::make_unique<QByteArray>(content));
    const QByteArray& kept = *contents.back();
    AddSource(name,
              zip_source_buffer(archive.get(), kept.constData(), static_cast<zip_uint64_t>(kept.size()), 0));
}

void ZipFile::AddStreamed(const QByteArray& name, std::function<PieceReader()> start) {
    streams.push_back(std::make_unique<Stream>());
    streams.back()->Start = std::move(start);
    AddSource(name, zip_source_function(archive.get(), Stream::Callback, streams.back().get()));
}

void ZipFile::Commit() {
    if (zip_close(archive.get()) == 0) {
        static_cast<void>(archive.release());
        return;
    }
    const QString text = QString::fromLocal8Bit(zip_strerror(archive.get()));
    archive.reset();
    for (const auto& stream : streams)
        if (stream->Failure) throw ado::Error(*stream->Failure);
    Fail(text);
}

}  // namespace zephrin::excel
