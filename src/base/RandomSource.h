#pragma once

#include <cstdint>
#include <random>

namespace kalvo {

/** Where chance comes from; tests give a chosen one. */
class RandomSource {
public:
    RandomSource() = default;
    RandomSource(const RandomSource&) = delete;
    RandomSource& operator=(const RandomSource&) = delete;
    virtual ~RandomSource() = default;

    /** Evenly distributed in [0, 1). */
    virtual double Uniform() = 0;
};

class SystemRandom final : public RandomSource {
public:
    /** The same seed gives the same numbers. */
    explicit SystemRandom(std::uint64_t seed = std::random_device{}()) : engine_(seed) {}

    double Uniform() override { return std::uniform_real_distribution<double>(0.0, 1.0)(engine_); }

private:
    std::mt19937_64 engine_;
};

} // namespace kalvo
