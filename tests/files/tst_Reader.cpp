#include "FilesTest.h"

#include <QElapsedTimer>

namespace zephrin::ado::files::test {

namespace {

using Reader = FilesTest;

QString StringFor(const QString& path) {
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=%1").arg(path);
}

TEST_F(Reader, IsNamedWhereItIsMissing) {
    const QString path = folder.filePath(QStringLiteral("a.mdb"));
    Write(path, "x");
    qputenv("ZEPHRIN_FILE_READER", "/nowhere/zephrin-file-reader");
    EXPECT_TRUE(
        Outcome(StringFor(path)).contains(QLatin1StringView("The package zephrin-file-reader brings it")));
}

TEST_F(Reader, SaysWhyAFileDoesNotOpen) {
    const QString path = folder.filePath(QStringLiteral("a.mdb"));
    const QByteArray head = QByteArray("\0\1\0\0Standard Jet DB\0", 20);
    struct Row {
        QByteArray Bytes;
        const char* Why;
    };
    const Row rows[] = {
        {{}, "it is empty"},
        {"hello", "it is not an Access database"},
        {QByteArray(100'000, '\0'), "it is not an Access database"},
        {head + QByteArray(1, '\x2a') + QByteArray(100'000, '\0'), "newer than what can be read"},
        {head + QByteArray(1, '\x01') + QByteArray(100'000, '\0'), "it is damaged"},
    };
    for (const Row& row : rows) {
        Write(path, row.Bytes);
        const QString outcome = Outcome(StringFor(path));
        EXPECT_TRUE(outcome.contains(path) && outcome.contains(QLatin1StringView(row.Why)))
            << outcome.toStdString();
    }
}

TEST_F(Reader, MayDoAnythingWithoutHarmToTheHost) {
    const QString path = folder.filePath(QStringLiteral("a.mdb"));
    Write(path, "x");
    const QString program = folder.filePath(QStringLiteral("reader"));
    struct Row {
        const char* Script;
        const char* Why;
    };
    // Each plays a reader that a file has got the better of.
    static constexpr Row rows[] = {
        {"exit 3", "the reader ended at it (code 3)"},
        {"kill -SEGV $$", "the reader ended at it (signal 11)"},
        {"exit 0", "the reader stopped in the middle of it"},
        {"sleep 100", "could not be read within 1 seconds"},
        {"cat /dev/zero", "the reader answered what can't be"},
        {"yes", "the reader answered what can't be"},
        {"printf '\\005\\000\\000\\000\\002\\002\\000\\000\\000'", "of another version"},
    };
    for (const Row& row : rows) {
        Write(program, QByteArray("#!/bin/sh\n") + row.Script + '\n');
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("ZEPHRIN_FILE_READER", QFile::encodeName(program));
        QString outcome;
        try {
            Open(StringFor(path), 1);
        } catch (const Error& error) {
            outcome = error.Description();
        }
        EXPECT_TRUE(outcome.contains(QLatin1StringView(row.Why)))
            << row.Script << ": " << outcome.toStdString();
    }
}

TEST_F(Reader, IsAskedForWhatItCanDoAlone) {
    struct Row {
        const char* Text;
        const char* Why;
    };
    static constexpr Row rows[] = {
        {"Provider=Microsoft.Jet.OLEDB.4.0", "names no file"},
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/nowhere.mdb", "Could not find file '/nowhere.mdb'"},
        {"Driver={Microsoft Access Driver (*.mdb, *.accdb)};DBQ=/nowhere.mdb;Dialect=MS Access",
         "Could not find file '/nowhere.mdb'"},
        {"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=a.mdb;Jet OLEDB:Database Password=secret",
         "with a password"},
        {"Driver={Microsoft Access Driver (*.mdb)};DBQ=a.mdb;SystemDB=w.mdw", "with a workgroup file"},
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=a;Extended Properties=\"dBASE IV;\"",
         "of the kind 'dBASE IV'"},
    };
    for (const Row& row : rows)
        EXPECT_TRUE(Outcome(QLatin1StringView(row.Text)).contains(QLatin1StringView(row.Why)))
            << row.Text << ": " << Outcome(QLatin1StringView(row.Text)).toStdString();
}

}  // namespace

}  // namespace zephrin::ado::files::test
