#include "support/ExpectedLog.h"
#include "support/SharedData.h"

#include <QApplication>
#include <QMutex>
#include <QStandardPaths>
#include <QStringList>

#include <cstring>
#include <gtest/gtest.h>

namespace {

QMutex logMutex;
QStringList unexpected;
QStringList expected;

void Remember(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    const QMutexLocker lock(&logMutex);
    for (const QString& part : std::as_const(expected))
        if (message.contains(part)) return;
    unexpected << message;
}

/// Where nothing that tests need may be missing, a test that is skipped for want of it fails.
class SkipListener : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo& test) override {
        if (test.result()->Skipped() && !LacksSharedFiles(*test.result()))
            ADD_FAILURE() << "skipped where nothing may be missing";
    }
    static bool LacksSharedFiles(const testing::TestResult& result) {
        for (int part = 0; part < result.total_part_count(); ++part)
            if (std::strstr(result.GetTestPartResult(part).message(), zephrin::test::NoSharedFiles))
                return true;
        return false;
    }
};

/// A warning that nobody announced fails the test in which it was logged.
class LogListener : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        const QMutexLocker lock(&logMutex);
        unexpected.clear();
        // The offscreen platform has no input method and says so.
        expected = {QStringLiteral("This plugin does not support"), QStringLiteral("propagateSizeHints")};
    }
    void OnTestEnd(const testing::TestInfo&) override {
        QStringList seen;
        {
            const QMutexLocker lock(&logMutex);
            seen.swap(unexpected);
        }
        for (const QString& message : std::as_const(seen))
            ADD_FAILURE() << "unexpected log: " << qPrintable(message);
    }
};

}  // namespace

namespace zephrin::test {

void ExpectLog(const QString& part) {
    const QMutexLocker lock(&logMutex);
    expected << part;
}

}  // namespace zephrin::test

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Windows are real, but nobody has to see them.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    qInstallMessageHandler(Remember);
    testing::UnitTest::GetInstance()->listeners().Append(new LogListener);
    if (qEnvironmentVariableIsSet("ZEPHRIN_SKIP_NOTHING"))
        testing::UnitTest::GetInstance()->listeners().Append(new SkipListener);
    return RUN_ALL_TESTS();
}
