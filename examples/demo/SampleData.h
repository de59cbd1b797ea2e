#pragma once

#include <QDir>
#include <QString>

namespace demo {

/// The shop to query, a folder of saved queries on it, and the shop once more as a workbook.
struct SampleData {
    QString Database;
    QString Queries;
    QString Workbook;
};

/// Finds them from where the program lies. In a build they are those of the build. Of an installed program,
/// whose own nobody may write, each user gets a copy, made at the first start: views and queries can be
/// stored there.
SampleData FindSampleData();

/// The copies of `user`, made where they are missing. Without a place to write, the installed database can
/// still be read.
SampleData CopySamples(const QDir& user, const QDir& installed);

}  // namespace demo
