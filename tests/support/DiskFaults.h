#pragma once

#include "support/FaultyDisk.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <functional>
#include <gtest/gtest.h>

namespace zephrin::test {

inline QByteArray ContentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Replaces the file at `path`, alone in its folder, over and over with a fault at each step in turn.
/// `replace` throws where it fails. Either the former content stands there and it failed, or the new one
/// does; and nothing else is left in the folder.
template <class Error>
void TryFaultsOfTheDisk(const QString& path, const std::function<void()>& replace) {
    const QByteArray former = ContentOf(path);
    const QDir folder = QFileInfo(path).absoluteDir();
    int failures = 0;
    for (const int error : {ENOSPC, EIO})
        for (int step = 0;; ++step) {
            {
                QFile file(path);
                ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(former) == former.size());
            }
            bool failed = false, happened = false;
            {
                const FaultyDisk disk(folder.path(), step, error);
                try {
                    replace();
                } catch (const Error& told) {
                    failed = true;
                    EXPECT_TRUE(QString::fromUtf8(told.what()).contains(QString::fromUtf8(strerror(error))))
                        << told.what();
                }
                happened = disk.Happened();
            }
            EXPECT_EQ(folder.entryList(QDir::Files | QDir::Hidden), QStringList(QFileInfo(path).fileName()));
            const bool isFormer = ContentOf(path) == former;
            if (!happened) break;
            EXPECT_TRUE(failed || !isFormer) << "step " << step << " lost it and told nothing";
            failures += failed && isFormer;
        }
    EXPECT_GE(failures, 8) << "opening, writing, synchronising and renaming";
}

}  // namespace zephrin::test
