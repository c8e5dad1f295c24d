#include "MediaSource.h"

#include "Json.h"
#include "Log.h"
#include "ParameterText.h"
#include "sim_MediaSourceAdaptor.h"
#include <MPL_MediaPlayerLib.h>

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusServiceWatcher>

#include <utility>

namespace sim
{
namespace
{

using InterfaceProperties = QMap<QString, QVariantMap>;

const QLatin1String kMediaSource("com.talvex.DBus.MediaPlayer.MediaSource");

// Keys of a preset record.
const QLatin1String kPresetId("preset_id");
const QLatin1String kPresetName("preset_name");
const QLatin1String kStateData("state_data");
const QLatin1String kSecondaryData("secondary_data");

SourceSetup At(const QString& aObjectPath, SourceSetup aMedia)
{
    aMedia.objectPath = aObjectPath;
    return aMedia;
}

} // namespace

MediaSource::MediaSource(const FaultPlan& aFaults, const QDBusConnection& aBus, SourceIdentity aIdentity,
                         SourceSetup aMedia)
    : Object(aFaults),
      m_Bus(aBus),
      m_Adaptor(Adapt<MediaSourceAdaptor>(this)),
      m_Identity(std::move(aIdentity)),
      m_Media(aFaults, aBus, At(m_Identity.objectPath, std::move(aMedia)))
{
    qDBusRegisterMetaType<InterfaceProperties>();
}

MediaSource::~MediaSource()
{
    if (m_Exported) {
        m_Bus.unregisterObject(m_Identity.objectPath);
        TellWatchers(false);
    }
}

bool MediaSource::Export()
{
    // The media manager tells every source which one it has made active.
    m_Bus.connect(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME, MPL::MPL_MEDIA_MANAGER_OBJECT_PATH,
                  MPL::MPL_MEDIA_MANAGER_INTERFACE_NAME, QStringLiteral("ActiveMediaSourceChanged"), this,
                  SLOT(ActiveSourceChanged(QString, QString)));
    auto* managerWatcher = new QDBusServiceWatcher(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME, m_Bus,
                                                   QDBusServiceWatcher::WatchForUnregistration, this);
    connect(managerWatcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { ActiveSourceChanged(QString(), QString()); });
    m_Exported = m_Media.Export() && m_Bus.registerObject(m_Identity.objectPath, this);
    if (m_Exported) {
        TellWatchers(true);
    }
    return m_Exported;
}

// Not held back until the call that is being served is answered: whoever has made a device appear may rely on
// the media manager to know of it.
void MediaSource::TellWatchers(bool aAdded)
{
    QDBusMessage message = QDBusMessage::createSignal(
        QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.ObjectManager"),
        aAdded ? QStringLiteral("InterfacesAdded") : QStringLiteral("InterfacesRemoved"));
    message << QVariant::fromValue(QDBusObjectPath(m_Identity.objectPath));
    if (aAdded) {
        message << QVariant::fromValue(InterfaceProperties{{kMediaSource, {}}});
    } else {
        message << QStringList{kMediaSource};
    }
    m_Bus.send(message);
}

QDBusObjectPath MediaSource::GetCapability(const QString& aName)
{
    const QMap<QString, QDBusObjectPath> paths = m_Media.Paths();
    const auto capability = paths.find(aName);
    if (capability != paths.end()) {
        return *capability;
    }
    Refuse(
        QStringLiteral("the source has no capability \"%1\"; GetCapabilities lists those it has").arg(aName));
    return QDBusObjectPath(QStringLiteral("/"));
}

QString MediaSource::GetMediaSourceStatus() const
{
    QVector<QPair<QString, QString>> status{
        {MPL::MPL_SOURCE_STATUS_KEY_ACTIVE_STATE,
         m_Active ? MPL::MPL_SOURCE_STATE_ACTIVE : MPL::MPL_SOURCE_STATE_INACTIVE},
        {MPL::MPL_SOURCE_STATUS_KEY_SOURCE_STATE,
         m_ErrorType.isEmpty() ? MPL::MPL_SOURCE_STATE_READY : MPL::MPL_SOURCE_STATE_ERROR}};
    if (!m_ErrorType.isEmpty()) {
        status.append({MPL::MPL_SOURCE_STATUS_KEY_ERROR_TYPE, m_ErrorType});
    }
    return MPL::Detail::MakeParameters(status);
}

void MediaSource::SetError(const QString& aErrorType)
{
    if (aErrorType != m_ErrorType) {
        m_ErrorType = aErrorType;
        AnnounceStatus();
    }
}

void MediaSource::ActiveSourceChanged(const QString& aServiceName, const QString& aObjectPath)
{
    const bool active = aServiceName == m_Identity.serviceName && aObjectPath == m_Identity.objectPath;
    if (active != m_Active) {
        m_Active = active;
        if (!active) {
            m_Media.Pause();
        }
        AnnounceStatus();
    }
}

void MediaSource::AnnounceStatus()
{
    Announce([this, status = GetMediaSourceStatus()] { Q_EMIT m_Adaptor->SignalStatusChanged(status); });
}

uint MediaSource::ActivatePreset(const QMap<QString, QString>& aPreset)
{
    const QString id = aPreset.value(kPresetId);
    if (id.isEmpty()) {
        return 1;
    }
    m_Preset = aPreset;
    Announce([this, id] { Q_EMIT m_Adaptor->SignalPresetActivated(id, m_Identity.objectPath); });
    return 0;
}

void MediaSource::PublishPreset()
{
    const QString id = QString::number(++m_LastPreset);
    m_Preset = {{kPresetId, id},
                {kPresetName, m_Identity.name + QLatin1Char(' ') + id},
                {kStateData, QString()},
                {kSecondaryData, QString()}};
    Announce([this, preset = m_Preset] {
        Q_EMIT m_Adaptor->SignalNewPresetContext(m_Identity.objectPath, preset);
    });
}

void MediaSource::UpdatePreset(const QString& aStateData, const QString& aSecondaryData)
{
    const QString previousState = m_Preset.value(kStateData);
    m_Preset[kStateData] = aStateData;
    m_Preset[kSecondaryData] = aSecondaryData;
    AnnounceUpdate(previousState);
}

void MediaSource::UpdatePresetSecondaryData(const QString& aSecondaryData)
{
    m_Preset[kSecondaryData] = aSecondaryData;
    AnnounceUpdate(m_Preset.value(kStateData));
}

void MediaSource::AnnounceUpdate(const QString& aPreviousState)
{
    Announce([this, aPreviousState, preset = m_Preset] {
        Q_EMIT m_Adaptor->SignalUpdatePresetContext(m_Identity.objectPath, aPreviousState, preset);
    });
}

void MediaSource::RemoteMessageReceived(const QVariantMap& aMessage)
{
    Log(QStringLiteral("remote message %1").arg(ToText(QJsonObject::fromVariantMap(aMessage))));
}

} // namespace sim
