#include "base/RandomSource.h"

#include <chrono>

SeededRandom::SeededRandom(unsigned long long seed) : m_engine(seed) {
}

unsigned long long SeededRandom::clockSeed() {
    return static_cast<unsigned long long>(std::chrono::steady_clock::now().time_since_epoch().count());
}

double SeededRandom::next() {
    return m_dist(m_engine);
}
