#include "PlayOrder.h"

#include <QRandomGenerator>

#include <algorithm>
#include <numeric>
#include <utility>

namespace sim
{

void PlayOrder::Reset(uint aCount, bool aShuffle, uint aFirst)
{
    m_Order.resize(static_cast<int>(aCount));
    std::iota(m_Order.begin(), m_Order.end(), 0U);
    if (aShuffle && aFirst < aCount) {
        std::swap(m_Order[0], m_Order[static_cast<int>(aFirst)]);
        std::shuffle(m_Order.begin() + 1, m_Order.end(), *QRandomGenerator::global());
    }
}

int PlayOrder::Step(uint aIndex, int aStep, bool aWrap) const
{
    const auto place = m_Order.indexOf(aIndex);
    if (place < 0) {
        return -1;
    }
    const auto size = m_Order.size();
    const auto next = place + aStep;
    if (next >= 0 && next < size) {
        return static_cast<int>(m_Order.at(next));
    }
    return aWrap ? static_cast<int>(m_Order.at((next + size) % size)) : -1;
}

} // namespace sim
