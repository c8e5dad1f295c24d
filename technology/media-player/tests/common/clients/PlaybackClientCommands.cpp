// The playback client's commands and queries: one blocking D-Bus call each.
#include <MPL_PlaybackClient.h>

#include <QDBusError>
#include <QDBusPendingReply>
#include <QDebug>

namespace MPL
{
namespace
{

using Proxy = ComTalvexDBusMediaPlayerPlaybackControlInterface;

template <typename Reply>
bool Finish(const char* aOperation, Reply& aReply)
{
    aReply.waitForFinished();
    if (aReply.isError()) {
        qCritical() << aOperation << "DBus error" << aReply.error();
        return false;
    }
    return true;
}

bool HasProxy(const char* aOperation, const Proxy* aProxy)
{
    if (aProxy == nullptr) {
        qCritical() << aOperation << "Invalid PlaybackControl Proxy";
    }
    return aProxy != nullptr;
}

template <typename Reply, typename... Parameters, typename... Arguments>
bool Command(const char* aOperation, Proxy* aProxy, Reply (Proxy::*aMethod)(Parameters...),
             const Arguments&... aArguments)
{
    if (!HasProxy(aOperation, aProxy)) {
        return false;
    }
    Reply reply = (aProxy->*aMethod)(aArguments...);
    return Finish(aOperation, reply);
}

template <typename Value>
bool Query(const char* aOperation, Proxy* aProxy, QDBusPendingReply<Value> (Proxy::*aMethod)(), Value& aValue)
{
    if (!HasProxy(aOperation, aProxy)) {
        return false;
    }
    QDBusPendingReply<Value> reply = (aProxy->*aMethod)();
    if (!Finish(aOperation, reply)) {
        return false;
    }
    aValue = reply.value();
    return true;
}

} // namespace

bool PlaybackClient::NextTrack()
{
    return Command("NextTrack", m_Proxy.data(), &Proxy::NextTrack);
}

bool PlaybackClient::PreviousTrack()
{
    return Command("PreviousTrack", m_Proxy.data(), &Proxy::PreviousTrack);
}

bool PlaybackClient::Pause()
{
    return Command("Pause", m_Proxy.data(), &Proxy::Pause);
}

bool PlaybackClient::Resume()
{
    return Command("Resume", m_Proxy.data(), &Proxy::Resume);
}

bool PlaybackClient::SeekTrack(const QString& aSeekMode)
{
    return Command("SeekTrack", m_Proxy.data(), &Proxy::SeekTrack, aSeekMode);
}

bool PlaybackClient::SeekToTime(unsigned int aPosition)
{
    return Command("SeekToTime", m_Proxy.data(), &Proxy::SeekToTime, aPosition);
}

bool PlaybackClient::Jump(int aOffset)
{
    return Command("Jump", m_Proxy.data(), &Proxy::Jump, aOffset);
}

bool PlaybackClient::SetTrackIndex(unsigned int aIndex)
{
    return Command("SetTrackIndex", m_Proxy.data(), &Proxy::SetTrackIndex, aIndex);
}

bool PlaybackClient::SetRepeatMode(const QString& aMode)
{
    return Command("SetRepeatMode", m_Proxy.data(), &Proxy::SetRepeatMode, aMode);
}

bool PlaybackClient::SetShuffleMode(const QString& aMode)
{
    return Command("SetShuffleMode", m_Proxy.data(), &Proxy::SetShuffleMode, aMode);
}

bool PlaybackClient::SetSpeedMode(const QString& aMode)
{
    return Command("SetSpeedMode", m_Proxy.data(), &Proxy::SetSpeedMode, aMode);
}

bool PlaybackClient::GetAllSpeedModes(QStringList& aModes)
{
    return Query("GetAllSpeedModes", m_Proxy.data(), &Proxy::GetAllSpeedModes, aModes);
}

bool PlaybackClient::GetFunctionalities(QString& aFunctionalities)
{
    return Query("GetFunctionalities", m_Proxy.data(), &Proxy::GetFunctionalities, aFunctionalities);
}

bool PlaybackClient::GetPlayState(QString& aState)
{
    return Query("GetPlayState", m_Proxy.data(), &Proxy::GetPlayState, aState);
}

bool PlaybackClient::GetRepeatMode(QString& aMode)
{
    return Query("GetRepeatMode", m_Proxy.data(), &Proxy::GetRepeatMode, aMode);
}

bool PlaybackClient::GetShuffleMode(QString& aMode)
{
    return Query("GetShuffleMode", m_Proxy.data(), &Proxy::GetShuffleMode, aMode);
}

bool PlaybackClient::GetSpeedMode(QString& aMode)
{
    return Query("GetSpeedMode", m_Proxy.data(), &Proxy::GetSpeedMode, aMode);
}

} // namespace MPL
