#include "PackageTest.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>

namespace {

using zephrin::test::Outcome;
using zephrin::test::PackageTest;
using zephrin::test::RunProgram;

QString ReadText(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

std::string Names(const QSet<QString>& set) {
    QStringList names(set.begin(), set.end());
    names.sort();
    return names.join(u' ').toStdString();
}

class Surface : public PackageTest {
 protected:
    static QStringList Headers() {
        QStringList headers;
        QDirIterator walk(Installed().Prefix() + QStringLiteral("/include"), {QStringLiteral("*.h")},
                          QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext()) headers << walk.next();
        return headers;
    }
};

TEST_F(Surface, EachHeaderCompilesAlone) {
    const QString name = QStringLiteral("headers");
    const Outcome configured = Installed().Configure(QStringLiteral(ZEPHRIN_PROJECTS "/headers"), name);
    ASSERT_TRUE(configured.Succeeded()) << configured.Text();
    EXPECT_EQ(configured.Output.count(QStringLiteral("compiles alone: zephrin/")), Headers().size());
    const Outcome built = Installed().Build(name);
    EXPECT_TRUE(built.Succeeded()) << built.Text();
}

// What a host may link is what the headers mark as exported, and nothing that the library is made of.
TEST_F(Surface, ShowsItsPublicClassesAlone) {
    static const QRegularExpression exportedClass(QStringLiteral("class ZEPHRIN_EXPORT (\\w+)"));
    static const QRegularExpression symbol(QStringLiteral("^[0-9a-f]+ \\w (.+)$"));
    static const QRegularExpression ofClass(
        QStringLiteral("^(?:vtable for |VTT for |typeinfo (?:name )?for |(?:non-)?virtual thunk to )?"
                       "zephrin::(?:ado::)?(\\w+)(?:::(?!Private)|$)"));
    QSet<QString> classes;
    for (const QString& header : Headers()) {
        auto found = exportedClass.globalMatch(ReadText(header));
        while (found.hasNext()) classes << found.next().captured(1);
    }
    ASSERT_TRUE(classes.contains(QStringLiteral("Zephrin")));

    const Outcome outcome = RunProgram(
        QStringLiteral(ZEPHRIN_NM),
        {QStringLiteral("--dynamic"), QStringLiteral("--defined-only"), QStringLiteral("--demangle"),
         Installed().LibraryFolder() + QStringLiteral("/libZephrin.so")});
    ASSERT_TRUE(outcome.Succeeded()) << outcome.Text();
    QSet<QString> shown;
    for (const QString& line : outcome.Output.split(u'\n', Qt::SkipEmptyParts)) {
        const QString name = symbol.match(line).captured(1);
        const QString owner = ofClass.match(name).captured(1);
        EXPECT_TRUE(classes.contains(owner)) << "leaks: " << qPrintable(line);
        shown << owner;
    }
    EXPECT_EQ(Names(shown), Names(classes));
}

TEST_F(Surface, TheLibraryIsVersioned) {
    const QString folder = Installed().LibraryFolder();
    EXPECT_TRUE(QFile::exists(folder + QStringLiteral("/libZephrin.so.0")));
    const Outcome read = RunProgram(QStringLiteral("readelf"),
                                    {QStringLiteral("-d"), folder + QStringLiteral("/libZephrin.so")});
    EXPECT_TRUE(read.Output.contains(QStringLiteral("soname: [libZephrin.so.0]"))) << read.Text();
    // Nothing leads back to where it was built.
    EXPECT_FALSE(read.Output.contains(QStringLiteral("PATH"))) << read.Text();
}

}  // namespace
