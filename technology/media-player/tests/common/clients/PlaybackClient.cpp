#include "harness/FunctionalitiesText.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_Parameters.h>
#include <MPL_PlaybackClient.h>
#include <MPL_TestEnvironment.h>

#include <QDebug>
#include <QThread>

namespace MPL
{

PlaybackClient::PlaybackClient(QThread* aThread) : QObject(nullptr), m_Thread(aThread) {}

PlaybackClient::PlaybackClient(const QString& aService, const QString& aPath, QThread* aThread)
    : PlaybackClient(aThread)
{
    CreateProxy(aService, aPath);
}

void PlaybackClient::CreateProxy(const QString& aService, const QString& aPath)
{
    using Proxy = ComTalvexDBusMediaPlayerPlaybackControlInterface;
    m_Proxy = new Proxy(aService, aPath, MPL_TestEnvironment::GetDbusConnection());
    if (m_Thread == nullptr) {
        delete m_Proxy.data();
        qCritical() << "PlaybackClient::PlaybackClient Invalid PlaybackControl proxy";
        return;
    }
    Proxy* proxy = m_Proxy.data();
    proxy->moveToThread(m_Thread);
    connect(proxy, &Proxy::SignalEvent, this, &PlaybackClient::Event);
    connect(proxy, &Proxy::SignalFunctionalitiesChanged, this, &PlaybackClient::FunctionalitiesChanged);
    connect(proxy, &Proxy::SignalPlayStateChanged, this, &PlaybackClient::PlayStateChanged);
    connect(proxy, &Proxy::SignalRepeatModeChanged, this, &PlaybackClient::RepeatModeChanged);
    connect(proxy, &Proxy::SignalShuffleModeChanged, this, &PlaybackClient::ShuffleModeChanged);
    connect(proxy, &Proxy::SignalSpeedModeChanged, this, &PlaybackClient::SpeedModeChanged);
    connect(m_Thread, &QThread::finished, proxy, &Proxy::deleteLater);
}

void PlaybackClient::GetAvailableFunctionMap(const QString& aText,
                                             QMap<QString, MPL::PlaybackClient::Functionality>& aMap)
{
    for (const FunctionalityEntry& entry : ReadFunctionalitiesText(aText)) {
        aMap.insert(entry.name, {entry.name, entry.state == MPL_FUNCTIONALITY_STATE_ENABLED, entry.options});
    }
}

void PlaybackClient::HandleError(const QString& aEvent)
{
    qDebug() << "PlaybackClient::HandleError -- Error not handled:" << aEvent;
}

void PlaybackClient::HandleFunctionalitiesChanged(const QString&) {}

void PlaybackClient::HandlePlayStateChanged(const QString&) {}

void PlaybackClient::HandleRepeatModeChanged(const QString&) {}

void PlaybackClient::HandleShuffleModeChanged(const QString&) {}

void PlaybackClient::HandleSpeedModeChanged(const QString&) {}

void PlaybackClient::Event(const QString& aEvent)
{
    // Not only errors: see "Kept on purpose" in docs/architecture.md.
    qCritical() << "PlaybackClient::Event --" << aEvent;
    QMap<QString, QString> parameters;
    GetParameters(aEvent, parameters);
    if (parameters.value(MPL_EVENT_KEY_EVENT_TYPE) == MPL_EVENT_TYPE_ERROR) {
        HandleError(aEvent);
    }
}

void PlaybackClient::FunctionalitiesChanged(const QString& aFunctions)
{
    // A source keeps its modes between tests; every test is to begin with the same ones.
    if (!m_StateReset && aFunctions.contains(MPL_REPEAT_MODE_REPEAT_MODE_ONE) &&
        aFunctions.contains(MPL_SHUFFLE_MODE_SHUFFLE_MODE_OFF)) {
        qDebug() << "Resetting PlaybackControl state.";
        SetRepeatMode(MPL_REPEAT_MODE_REPEAT_MODE_OFF);
        SetShuffleMode(MPL_SHUFFLE_MODE_SHUFFLE_MODE_OFF);
        m_StateReset = true;
    }
    if (m_FunctionalityUpdatesDisabled) {
        return;
    }
    m_Functionalities.clear();
    GetAvailableFunctionMap(aFunctions, m_Functionalities);
    HandleFunctionalitiesChanged(aFunctions);
}

void PlaybackClient::PlayStateChanged(const QString& aPlayState)
{
    HandlePlayStateChanged(aPlayState);
}

void PlaybackClient::RepeatModeChanged(const RepeatMode& aRepeatMode)
{
    HandleRepeatModeChanged(aRepeatMode);
}

void PlaybackClient::ShuffleModeChanged(const ShuffleMode& aShuffleMode)
{
    HandleShuffleModeChanged(aShuffleMode);
}

void PlaybackClient::SpeedModeChanged(const QString& aSpeed)
{
    HandleSpeedModeChanged(aSpeed);
}

} // namespace MPL
