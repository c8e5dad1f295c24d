/// Chance from a seed, the same with every compiler: the standard's engine, but none of its distributions.
#pragma once

#include <QVector>

#include <random>

namespace chaos
{

class Dice
{
public:
    explicit Dice(quint64 aSeed) : m_Engine(aSeed) {}

    /// From 0 to `aSides` - 1.
    int Roll(qint64 aSides) { return static_cast<int>(m_Engine() % static_cast<quint64>(aSides)); }
    bool Chance(int aPercent) { return Roll(100) < aPercent; }

    template <typename T>
    const T& Pick(const QVector<T>& aChoices)
    {
        return aChoices.at(Roll(aChoices.size()));
    }

private:
    std::mt19937_64 m_Engine;
};

} // namespace chaos
