// In which order the tracks of a queue are played.
#pragma once

#include <QVector>

namespace sim
{

class PlayOrder
{
public:
    /// Lays down the order of aCount tracks: as they stand, or shuffled with aFirst at the beginning.
    void Reset(uint aCount, bool aShuffle, uint aFirst);

    /// The track before or after aIndex, -1 when there is none. With aWrap the order is a ring.
    int Next(uint aIndex, bool aWrap) const { return Step(aIndex, 1, aWrap); }
    int Previous(uint aIndex, bool aWrap) const { return Step(aIndex, -1, aWrap); }
    /// The track that is played first, -1 for an empty order.
    int First() const { return m_Order.isEmpty() ? -1 : static_cast<int>(m_Order.first()); }

private:
    int Step(uint aIndex, int aStep, bool aWrap) const;

    QVector<uint> m_Order;
};

} // namespace sim
