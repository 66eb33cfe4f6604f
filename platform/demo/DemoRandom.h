#pragma once
// The generator's own random numbers: xoshiro256** seeded through splitmix64, so that a seed
// gives the same company on every machine and every build.

#include <cstdint>
#include <vector>

namespace trellin::demo {

class DemoRandom {
 public:
  explicit DemoRandom(std::uint64_t seed);

  [[nodiscard]] std::uint64_t Next();
  // A whole number in [0, n); n must be above 0.
  [[nodiscard]] std::int64_t Below(std::int64_t n);
  // A whole number in [low, high].
  [[nodiscard]] std::int64_t Between(std::int64_t low, std::int64_t high) {
    return low + Below(high - low + 1);
  }
  // A double in [0, 1).
  [[nodiscard]] double Unit();
  [[nodiscard]] bool Chance(double probability) { return Unit() < probability; }
  template <typename T>
  [[nodiscard]] const T& Pick(const std::vector<T>& from) {
    return from[static_cast<std::size_t>(Below(static_cast<std::int64_t>(from.size())))];
  }
  // An index into weights, chosen in proportion to them.
  [[nodiscard]] std::size_t Weighted(const std::vector<int>& weights);

 private:
  std::uint64_t s_[4];
};

}  // namespace trellin::demo
