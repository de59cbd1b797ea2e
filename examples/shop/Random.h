#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace shop {

/// A sequence of numbers that is the same on every machine and with every standard library.
class Random {
 public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    /// From 0 to `limit` - 1.
    int Below(int limit) { return static_cast<int>(Next() % static_cast<std::uint64_t>(limit)); }
    /// Both ends included.
    int Between(int low, int high) { return low + Below(high - low + 1); }
    /// True in `percent` of a hundred cases.
    bool Chance(int percent) { return Below(100) < percent; }

    template <typename List>
    const auto& Of(const List& list) {
        return list[static_cast<std::size_t>(Below(static_cast<int>(std::size(list))))];
    }

 private:
    std::uint64_t Next() {
        state += 0x9e3779b97f4a7c15u;
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return (z ^ (z >> 31)) >> 1;
    }

    std::uint64_t state;
};

}  // namespace shop
