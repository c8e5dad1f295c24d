#include "MediaManager.h"

#include "sim_MediaManagerAdaptor.h"
#include <MPL_MediaPlayerLib.h>

#include <algorithm>
#include <utility>

namespace sim
{
namespace
{

const QLatin1String kPlaybackControl("com.talvex.DBus.MediaPlayer.PlaybackControl");

QString PlaybackControlPath(const MPL::ServiceObject& aSource)
{
    return aSource.objectPath.path() + MPL::MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL;
}

bool IsSame(const MPL::ServiceObject& aOne, const MPL::ServiceObject& aOther)
{
    return aOne.serviceName == aOther.serviceName && aOne.objectPath == aOther.objectPath;
}

QString NoSuchSource(const MPL::ServiceObject& aSource)
{
    return QStringLiteral(
               "no such media source: \"%1\" at \"%2\"; take one that GetAvailableMediaSources lists")
        .arg(aSource.serviceName, aSource.objectPath.path());
}

} // namespace

MediaManager::MediaManager(const FaultPlan& aFaults, const QDBusConnection& aBus,
                           const QString& aDatabasePath)
    : Object(aFaults),
      m_Bus(aBus),
      m_Adaptor(Adapt<MediaManagerAdaptor>(this)),
      m_Finder(aBus),
      m_Stored(aDatabasePath)
{
    connect(&m_Finder, &SourceFinder::Found, this, &MediaManager::AddSource);
    connect(&m_Finder, &SourceFinder::Lost, this, &MediaManager::RemoveSource);
    connect(&m_Finder, &SourceFinder::Settled, this, &MediaManager::AnswerWaiting);
}

bool MediaManager::Export()
{
    for (int i = 1; i <= Faults().managerObjects; ++i) {
        const QString number = i == 1 ? QString() : QString::number(i);
        if (!m_Bus.registerObject(MPL::MPL_MEDIA_MANAGER_OBJECT_PATH + number, this)) {
            return false;
        }
    }
    m_Finder.Start();
    return true;
}

QList<MPL::ServiceObject> MediaManager::GetAvailableMediaSources()
{
    if (m_Finder.IsSettled()) {
        return m_Sources;
    }
    setDelayedReply(true);
    m_Waiting.emplace_back(
        [this, call = message()] { m_Bus.send(call.createReply(QVariant::fromValue(m_Sources))); });
    return {};
}

void MediaManager::SetActiveMediaSource(const MPL::ServiceObject& aSource)
{
    if (Knows(aSource)) {
        Activate(aSource, [] {}); // answered on return
    } else if (m_Finder.IsSettled()) {
        Refuse(NoSuchSource(aSource));
    } else {
        setDelayedReply(true);
        m_Waiting.emplace_back([this, aSource, call = message()] {
            if (Knows(aSource)) {
                Activate(aSource, [this, &call] { m_Bus.send(call.createReply()); });
            } else {
                m_Bus.send(call.createErrorReply(kRefused, NoSuchSource(aSource)));
            }
        });
    }
}

bool MediaManager::Knows(const MPL::ServiceObject& aSource) const
{
    return std::any_of(m_Sources.begin(), m_Sources.end(),
                       [&aSource](const MPL::ServiceObject& aKnown) { return IsSame(aKnown, aSource); });
}

void MediaManager::AddSource(const MPL::ServiceObject& aSource)
{
    m_Sources.append(aSource);
    Announce([this, aSource] {
        Q_EMIT m_Adaptor->MediaSourceAdded(aSource.serviceName, aSource.objectPath.path());
    });
    // Read anew each time: a test may have cleared what is stored while the manager runs.
    if (m_Active.serviceName.isEmpty() && IsSame(m_Stored.Load(), aSource)) {
        SetActive(aSource);
        AnnounceActive();
        ResumePlayback();
    }
}

void MediaManager::RemoveSource(const MPL::ServiceObject& aSource)
{
    m_Sources.erase(
        std::remove_if(m_Sources.begin(), m_Sources.end(),
                       [&aSource](const MPL::ServiceObject& aKnown) { return IsSame(aKnown, aSource); }),
        m_Sources.end());
    Announce([this, aSource] {
        Q_EMIT m_Adaptor->MediaSourceRemoved(aSource.serviceName, aSource.objectPath.path());
    });
    // It stays stored: it is resumed when it comes back.
    if (IsSame(m_Active, aSource)) {
        SetActive(MPL::ServiceObject());
        AnnounceActive();
    }
}

// Stored and followed before the answer: whoever has it may kill the manager at once, or let the source play.
// The signal goes out after it.
void MediaManager::Activate(const MPL::ServiceObject& aSource, const std::function<void()>& aAnswer)
{
    if (IsSame(m_Active, aSource)) {
        aAnswer();
        return;
    }
    m_Stored.Save(aSource);
    SetActive(aSource);
    aAnswer();
    AnnounceActive();
}

void MediaManager::SetActive(const MPL::ServiceObject& aSource)
{
    FollowPlayState(m_Active, false);
    m_Active = aSource;
    FollowPlayState(m_Active, true);
}

void MediaManager::AnnounceActive()
{
    Announce([this, source = m_Active] {
        Q_EMIT m_Adaptor->ActiveMediaSourceChanged(source.serviceName, source.objectPath.path());
    });
}

void MediaManager::FollowPlayState(const MPL::ServiceObject& aSource, bool aFollow)
{
    if (aSource.serviceName.isEmpty()) {
        return;
    }
    const QString path = PlaybackControlPath(aSource);
    const QString signal = QStringLiteral("SignalPlayStateChanged");
    const char* slot = SLOT(PlayStateChanged(QString));
    if (aFollow) {
        m_Bus.connect(aSource.serviceName, path, kPlaybackControl, signal, this, slot);
    } else {
        m_Bus.disconnect(aSource.serviceName, path, kPlaybackControl, signal, this, slot);
    }
}

void MediaManager::PlayStateChanged(const QString& aState)
{
    m_Stored.SavePlaybackState(aState);
}

// A source that can't play answers with an error or false, which leaves it as it is.
void MediaManager::ResumePlayback()
{
    if (m_Stored.LoadPlaybackState() == MPL::MPL_PLAY_STATE_PLAYING) {
        m_Bus.asyncCall(QDBusMessage::createMethodCall(m_Active.serviceName, PlaybackControlPath(m_Active),
                                                       kPlaybackControl, QStringLiteral("Resume")));
    }
}

void MediaManager::AnswerWaiting()
{
    for (const std::function<void()>& answer : std::exchange(m_Waiting, {})) {
        answer();
    }
}

} // namespace sim
