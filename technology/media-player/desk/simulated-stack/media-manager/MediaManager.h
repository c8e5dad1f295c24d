/// The simulated media manager: knows the media sources of its bus, makes one of them the active one, and
/// keeps that one and its playback state in its database, so that it is active, and plays, again when it
/// appears after the next start.
#pragma once

#include "Object.h"
#include "SourceFinder.h"
#include "StoredSource.h"
#include <MPL_ServiceObject.h>

#include <QDBusConnection>
#include <QList>

#include <functional>
#include <vector>

class MediaManagerAdaptor;

namespace sim
{

class MediaManager : public Object
{
    Q_OBJECT

public:
    /// Without a database path the active source is kept only while the program runs.
    MediaManager(const FaultPlan& aFaults, const QDBusConnection& aBus, const QString& aDatabasePath);

    /// Exports the object, or as many as the faults ask for, and starts to look for sources.
    bool Export();

    /// The empty object while no source is active.
    MPL::ServiceObject GetActiveMediaSource() const { return m_Active; }
    /// In the order in which they were found. Answered once a running look-up has ended, so that a source
    /// which was on the bus before the call is in the list.
    QList<MPL::ServiceObject> GetAvailableMediaSources();
    /// Refuses a source that is not available.
    void SetActiveMediaSource(const MPL::ServiceObject& aSource);

private Q_SLOTS:
    void PlayStateChanged(const QString& aState);

private:
    void AddSource(const MPL::ServiceObject& aSource);
    void RemoveSource(const MPL::ServiceObject& aSource);
    bool Knows(const MPL::ServiceObject& aSource) const;
    void SetActive(const MPL::ServiceObject& aSource);
    void AnnounceActive();
    void Activate(const MPL::ServiceObject& aSource, const std::function<void()>& aAnswer);
    void AnswerWaiting();
    void FollowPlayState(const MPL::ServiceObject& aSource, bool aFollow);
    void ResumePlayback();

    QDBusConnection m_Bus;
    MediaManagerAdaptor* m_Adaptor;
    SourceFinder m_Finder;
    StoredSource m_Stored;
    QList<MPL::ServiceObject> m_Sources;
    MPL::ServiceObject m_Active;
    std::vector<std::function<void()>> m_Waiting; // answers that need a settled list
};

} // namespace sim
