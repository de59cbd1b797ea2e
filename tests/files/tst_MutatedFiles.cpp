#include "FilesTest.h"

#include <QElapsedTimer>

#include <random>

namespace zephrin::ado::files::test {

namespace {

/// Files that were damaged by chance or by intent. ZEPHRIN_MUTATIONS says how many of each kind are tried.
class MutatedFiles : public FilesTest, public testing::WithParamInterface<const char*> {
 protected:
    QByteArray Seed() {
        const QString name = QLatin1StringView(GetParam());
        if (name == u"book.xlsx") {
            const QString path = folder.filePath(name);
            EXPECT_TRUE(MakeWorkbook(path));
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }
        QFile file(SharedFolder() + name);
        return !SharedFolder().isEmpty() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QByteArray Mutated(QByteArray bytes) {
        const auto below = [this](qsizetype most) { return qsizetype(random() % quint64(most)); };
        for (qsizetype times = 1 + below(8); times > 0; --times) {
            const qsizetype at = below(bytes.size());
            const qsizetype length = std::min(1 + below(64), bytes.size() - at);
            switch (below(6)) {
                case 0:
                    bytes[at] = char(bytes[at] ^ (1 << below(8)));
                    break;
                case 1:
                    bytes[at] = char(random());
                    break;
                case 2:
                    bytes.replace(at, length, QByteArray(length, '\xff'));
                    break;
                case 3:
                    bytes.replace(at, length, QByteArray(length, '\0'));
                    break;
                case 4:
                    bytes.replace(at, length, bytes.mid(below(bytes.size() - length + 1), length));
                    break;
                default:
                    if (below(10) == 0) bytes.truncate(at + 1);
                    break;
            }
        }
        return bytes;
    }

    std::mt19937_64 random{20};
};

TEST_P(MutatedFiles, EndInRowsOrInAnErrorThatNamesThem) {
    const QByteArray seed = Seed();
    if (seed.isEmpty()) GTEST_SKIP() << GetParam() << ": " << zephrin::test::NoSharedFiles;
    const QString path = folder.filePath(QStringLiteral("mutated"));
    const bool isWorkbook = QLatin1StringView(GetParam()).contains(QLatin1StringView(".xls"));
    const QString connectionString =
        (isWorkbook ? QStringLiteral("Driver={Microsoft Excel Driver (*.xls)};DBQ=%1")
                    : QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=%1"))
            .arg(path);
    constexpr int seconds = 20;
    const int count = qEnvironmentVariableIntValue("ZEPHRIN_MUTATIONS") > 0
                          ? qEnvironmentVariableIntValue("ZEPHRIN_MUTATIONS")
                          : 5;
    for (int number = 0; number < count; ++number) {
        Write(path, Mutated(seed));
        QElapsedTimer time;
        time.start();
        try {
            const auto connection = Open(connectionString, seconds);
            const RecordsetPtr tables = connection->OpenSchema(Schema::Tables);
            for (qint64 row = 0; row < tables->RecordCount(); ++row) {
                const QString answer =
                    Answer(*connection, QStringLiteral("SELECT * FROM [%1]").arg(tables->TextAt(row, 2)));
                if (answer.startsWith(QLatin1StringView("! Timeout")))
                    ADD_FAILURE() << number << ' ' << answer.toStdString();
            }
        } catch (const Error& error) {
            EXPECT_TRUE(error.Description().contains(path)) << number << ' ' << error.what();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, MutatedFiles,
                         testing::Values("book.xlsx", "testV1997.mdb", "queryTestV2003.mdb",
                                         "calcFieldTestV2010.accdb"));

}  // namespace

}  // namespace zephrin::ado::files::test
