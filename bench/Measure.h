#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace zephrin::bench {

/// Seconds that `work` takes.
template <class Work>
double Seconds(Work work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// The middle of several runs: a machine that others use too makes single ones worth little.
inline double Median(std::vector<double> runs) {
    std::sort(runs.begin(), runs.end());
    return runs.at(runs.size() / 2);
}

inline void PrintRow(const char* what, double seconds, double base, const char* wanted = "") {
    std::printf("  %-52s %8.3f s   %6.2f   %s\n", what, seconds, seconds / base, wanted);
    std::fflush(stdout);
}

}  // namespace zephrin::bench
