#include "support/SharedData.h"

#include <QDir>

namespace zephrin::test {

QString SharedFolder(const QString& name) {
    const QString beside = QStringLiteral(ZEPHRIN_SOURCE_DIR "/../shared/data");
    const QDir folder(QDir(qEnvironmentVariable("ZEPHRIN_SHARED_DATA", beside)).filePath(name));
    return folder.exists() ? folder.path() + u'/' : QString();
}

}  // namespace zephrin::test
