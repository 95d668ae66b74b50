#pragma once

#include <random>

// Random numbers behind a seam: the program seeds from the clock, tests from a fixed seed.
class RandomSource {
public:
    virtual ~RandomSource() = default;
    // Uniform in [0, 1), like the classic Rnd.
    virtual double next() = 0;
};

class SeededRandom : public RandomSource {
public:
    explicit SeededRandom(unsigned long long seed);
    static unsigned long long clockSeed();
    double next() override;

private:
    std::mt19937_64 m_engine;
    std::uniform_real_distribution<double> m_dist{0.0, 1.0};
};
