#pragma once

#include "Installation.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace zephrin::test {

/// One installation for all the tests of the program: it is only read.
class PackageTest : public testing::Test {
 protected:
    static const Installation& Installed() {
        static const Installation installation;
        return installation;
    }

    void SetUp() override {
        ASSERT_TRUE(Installed().Failure().isEmpty()) << qPrintable(Installed().Failure());
    }
};

}  // namespace zephrin::test
