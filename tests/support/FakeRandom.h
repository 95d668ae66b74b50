#pragma once

#include "base/RandomSource.h"

#include <QList>

// Plays back scripted values in [0, 1); when they run out it falls back to a seeded generator.
class FakeRandom : public RandomSource {
public:
    explicit FakeRandom(unsigned long long seed = 1) : m_fallback(seed) {}
    QList<double> values;
    int draws = 0;

    double next() override {
        ++draws;
        return values.isEmpty() ? m_fallback.next() : values.takeFirst();
    }

private:
    SeededRandom m_fallback;
};
