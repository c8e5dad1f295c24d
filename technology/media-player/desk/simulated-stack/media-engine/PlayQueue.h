// The tracks that are to be played, and the one whose turn it is.
#pragma once

#include "Track.h"

#include <QObject>

#include <limits>

namespace sim
{

class PlayQueue : public QObject
{
    Q_OBJECT
public:
    /// The current index of an empty queue.
    static constexpr uint kNone = std::numeric_limits<uint>::max();

    using QObject::QObject;

    /// Replaces the queue. aIndex becomes the current track; the first one when it is out of range. A remote
    /// queue is one that another device has sent.
    void Load(const Tracks& aTracks, uint aIndex, bool aRemote = false);
    /// Makes another track the current one. Returns false when there is no such track.
    bool Select(uint aIndex);

    bool IsEmpty() const { return m_Tracks.isEmpty(); }
    uint Count() const { return static_cast<uint>(m_Tracks.size()); }
    uint Index() const { return m_Index; }
    bool IsRemote() const { return m_Remote; }
    const Tracks& All() const { return m_Tracks; }
    /// The current track; a blank one when the queue is empty.
    Track Current() const;

Q_SIGNALS:
    void Changed();
    void RemoteChanged(bool aRemote);
    /// Follows Changed; also sent when the same index now stands for another track.
    void IndexChanged(uint aIndex);

private:
    Tracks m_Tracks;
    uint m_Index = kNone;
    bool m_Remote = false;
};

} // namespace sim
