#include "fuzz/Targets.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Fonts and icons of a form need one.
    static QGuiApplication application(*count, *arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        zephrin::fuzz::ZEPHRIN_FUZZ_FEED({reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        std::abort();
    }
    return 0;
}
