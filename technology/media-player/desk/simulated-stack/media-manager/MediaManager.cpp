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

QString PlaybackControlPath(const MPL::ServiceObject& source)
{
    return source.objectPath.path() + MPL::MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL;
}

bool IsSame(const MPL::ServiceObject& one, const MPL::ServiceObject& other)
{
    return one.serviceName == other.serviceName && one.objectPath == other.objectPath;
}

QString NoSuchSource(const MPL::ServiceObject& source)
{
    return QStringLiteral(
               "no such media source: \"%1\" at \"%2\"; take one that GetAvailableMediaSources lists")
        .arg(source.serviceName, source.objectPath.path());
}

} // namespace

MediaManager::MediaManager(const FaultPlan& faults, const QDBusConnection& bus, const QString& databasePath)
    : Object(faults),
      m_Bus(bus),
      m_Adaptor(Adapt<MediaManagerAdaptor>(this)),
      m_Finder(bus),
      m_Stored(databasePath)
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

void MediaManager::SetActiveMediaSource(const MPL::ServiceObject& source)
{
    if (Knows(source)) {
        Activate(source, [] {}); // answered on return
    } else if (m_Finder.IsSettled()) {
        Refuse(NoSuchSource(source));
    } else {
        setDelayedReply(true);
        m_Waiting.emplace_back([this, source, call = message()] {
            if (Knows(source)) {
                Activate(source, [this, &call] { m_Bus.send(call.createReply()); });
            } else {
                m_Bus.send(call.createErrorReply(kRefused, NoSuchSource(source)));
            }
        });
    }
}

bool MediaManager::Knows(const MPL::ServiceObject& source) const
{
    return std::any_of(m_Sources.begin(), m_Sources.end(),
                       [&source](const MPL::ServiceObject& known) { return IsSame(known, source); });
}

void MediaManager::AddSource(const MPL::ServiceObject& source)
{
    m_Sources.append(source);
    Announce(
        [this, source] { Q_EMIT m_Adaptor->MediaSourceAdded(source.serviceName, source.objectPath.path()); });
    // Read anew each time: a test may have cleared what is stored while the manager runs.
    if (m_Active.serviceName.isEmpty() && IsSame(m_Stored.Load(), source)) {
        SetActive(source);
        AnnounceActive();
        ResumePlayback();
    }
}

void MediaManager::RemoveSource(const MPL::ServiceObject& source)
{
    m_Sources.erase(
        std::remove_if(m_Sources.begin(), m_Sources.end(),
                       [&source](const MPL::ServiceObject& known) { return IsSame(known, source); }),
        m_Sources.end());
    Announce(
        [this, source] { Q_EMIT m_Adaptor->MediaSourceRemoved(source.serviceName, source.objectPath.path()); });
    // It stays stored: it is resumed when it comes back.
    if (IsSame(m_Active, source)) {
        SetActive(MPL::ServiceObject());
        AnnounceActive();
    }
}

// Done before the answer, so that whoever has it may kill the manager or let the source play; signalled
// after.
void MediaManager::Activate(const MPL::ServiceObject& source, const std::function<void()>& answer)
{
    if (IsSame(m_Active, source)) {
        answer();
        return;
    }
    m_Stored.Save(source);
    SetActive(source);
    answer();
    AnnounceActive();
}

void MediaManager::SetActive(const MPL::ServiceObject& source)
{
    FollowPlayState(m_Active, false);
    m_Active = source;
    FollowPlayState(m_Active, true);
}

void MediaManager::AnnounceActive()
{
    Announce([this, source = m_Active] {
        Q_EMIT m_Adaptor->ActiveMediaSourceChanged(source.serviceName, source.objectPath.path());
    });
}

void MediaManager::FollowPlayState(const MPL::ServiceObject& source, bool follow)
{
    if (source.serviceName.isEmpty()) {
        return;
    }
    const QString path = PlaybackControlPath(source);
    const QString signal = QStringLiteral("SignalPlayStateChanged");
    const char* slot = SLOT(PlayStateChanged(QString));
    if (follow) {
        m_Bus.connect(source.serviceName, path, kPlaybackControl, signal, this, slot);
    } else {
        m_Bus.disconnect(source.serviceName, path, kPlaybackControl, signal, this, slot);
    }
}

void MediaManager::PlayStateChanged(const QString& state)
{
    m_Stored.SavePlaybackState(state);
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
