#include "platform/demo/DemoRandom.h"

namespace trellin::demo {

namespace {

std::uint64_t SplitMix(std::uint64_t& state) {
  std::uint64_t z = (state += 0x9e3779b97f4a7c15ULL);
  z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
  z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
  return z ^ (z >> 31);
}

std::uint64_t Rotl(std::uint64_t x, int k) { return (x << k) | (x >> (64 - k)); }

}  // namespace

DemoRandom::DemoRandom(std::uint64_t seed) {
  // splitmix64 spreads any seed, 0 included, over the whole state, which must not be all zero.
  for (auto& word : s_) word = SplitMix(seed);
}

std::uint64_t DemoRandom::Next() {
  const std::uint64_t result = Rotl(s_[1] * 5, 7) * 9;
  const std::uint64_t t = s_[1] << 17;
  s_[2] ^= s_[0];
  s_[3] ^= s_[1];
  s_[1] ^= s_[2];
  s_[0] ^= s_[3];
  s_[2] ^= t;
  s_[3] = Rotl(s_[3], 45);
  return result;
}

std::int64_t DemoRandom::Below(std::int64_t n) {
  // Multiply-shift keeps the draw unbiased enough for a demo and free of division.
  return static_cast<std::int64_t>(
      (static_cast<unsigned __int128>(Next()) * static_cast<std::uint64_t>(n)) >> 64);
}

double DemoRandom::Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }

std::size_t DemoRandom::Weighted(const std::vector<int>& weights) {
  int total = 0;
  for (int w : weights) total += w;
  std::int64_t draw = Below(total);
  for (std::size_t i = 0; i < weights.size(); ++i) {
    draw -= weights[i];
    if (draw < 0) return i;
  }
  return weights.size() - 1;
}

}  // namespace trellin::demo
