// Random numbers that are the same on every machine and with every library, unlike those of <random>.

#pragma once

#include <QtGlobal>
#include <array>
#include <bit>
#include <cstddef>

namespace qbx {

/// xoshiro256**, seeded through splitmix64. Each (seed, stream) pair has its own sequence, so that the numbers of one
/// sample customer do not depend on how many numbers another one used.
class RandomSource {
 public:
  RandomSource(quint64 seed, quint64 stream) {
    quint64 state = seed * 0x9E3779B97F4A7C15U + stream;
    for (quint64& word : words_) {
      state += 0x9E3779B97F4A7C15U;
      quint64 mixed = state;
      mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
      mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
      word = mixed ^ (mixed >> 31);
    }
  }

  quint64 Next() {
    const quint64 result = std::rotl(words_[1] * 5, 7) * 9;
    const quint64 shifted = words_[1] << 17;
    words_[2] ^= words_[0];
    words_[3] ^= words_[1];
    words_[1] ^= words_[2];
    words_[0] ^= words_[3];
    words_[2] ^= shifted;
    words_[3] = std::rotl(words_[3], 45);
    return result;
  }

  /// From `low` to `high`, both included.
  int Between(int low, int high) {
    const auto range = static_cast<quint64>(high - low) + 1;
    return low + static_cast<int>(((Next() >> 32) * range) >> 32);
  }
  bool Chance(int percent) { return Between(0, 99) < percent; }

  template <typename Table>
  const auto& Pick(const Table& table) {
    return std::begin(table)[Between(0, static_cast<int>(std::size(table)) - 1)];
  }

 private:
  std::array<quint64, 4> words_{};
};

}  // namespace qbx
