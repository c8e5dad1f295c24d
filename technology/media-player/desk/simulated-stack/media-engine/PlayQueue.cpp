#include "PlayQueue.h"

namespace sim
{

void PlayQueue::Load(const Tracks& aTracks, uint aIndex, bool aRemote)
{
    const bool remoteChanges = m_Remote != aRemote;
    m_Tracks = aTracks;
    m_Remote = aRemote;
    m_Index = IsEmpty() ? kNone : (aIndex < Count() ? aIndex : 0);
    Q_EMIT Changed();
    if (remoteChanges) {
        Q_EMIT RemoteChanged(aRemote);
    }
    Q_EMIT IndexChanged(m_Index);
}

bool PlayQueue::Select(uint aIndex)
{
    if (aIndex >= Count()) {
        return false;
    }
    if (aIndex != m_Index) {
        m_Index = aIndex;
        Q_EMIT IndexChanged(aIndex);
    }
    return true;
}

Track PlayQueue::Current() const
{
    return m_Index < Count() ? m_Tracks.at(static_cast<int>(m_Index)) : Track();
}

} // namespace sim
