#include "fuzz/Targets.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace zephrin::fuzz {
namespace {

struct Target {
    const char* Name;
    void (*Feed)(const QByteArray& input);
};
constexpr Target targets[] = {
    {"recordset", FeedRecordset},   {"statement", FeedStatement}, {"difference", FeedDifference},
    {"connection", FeedConnection}, {"form", FeedForm},           {"workbook", FeedWorkbook},
};

/// The files of a target in `fuzz/found` or `fuzz/seeds`.
QStringList FilesOf(const char* kind, const char* target) {
    const QDir folder(
        QStringLiteral(ZEPHRIN_FUZZ_FOLDER "/%1/%2").arg(QLatin1StringView(kind), QLatin1StringView(target)));
    QStringList paths;
    for (const QString& name : folder.entryList(QDir::Files)) paths << folder.filePath(name);
    return paths;
}

/// Every input that ever failed, and what fuzzing begins from.
TEST(Found, FailsNoMore) {
    for (const Target& target : targets) {
        const QStringList paths = FilesOf("found", target.Name) + FilesOf("seeds", target.Name);
        EXPECT_FALSE(paths.isEmpty()) << target.Name;
        for (const QString& path : paths) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
            try {
                target.Feed(file.readAll());
            } catch (const std::exception& failure) {
                ADD_FAILURE() << qPrintable(path) << ": " << failure.what();
            }
        }
    }
}

}  // namespace
}  // namespace zephrin::fuzz
