/// One simulated media source object: who it is, its status, its capabilities and its preset.
#pragma once

#include "Object.h"
#include "SourceCapabilities.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

class MediaSourceAdaptor;

namespace sim
{

struct SourceIdentity {
    QString serviceName;
    QString objectPath;
    QString name;
    QString type;
    QString deviceId;
    QString devicePath;
    QString busNumber;
};

class MediaSource : public Object
{
    Q_OBJECT

public:
    /// `aMedia` says what the source plays and offers; its object path is filled in here.
    MediaSource(const FaultPlan& aFaults, const QDBusConnection& aBus, SourceIdentity aIdentity,
                SourceSetup aMedia);
    ~MediaSource() override;

    const SourceIdentity& Identity() const { return m_Identity; }
    /// True while the media manager has made it the active source.
    bool IsActive() const { return m_Active; }

    /// The source works no longer (or, with an empty text, works again).
    void SetError(const QString& aErrorType);

    /// Exports the object and those of its capabilities, and tells those who watch the service. All of them
    /// vanish when the source is deleted.
    bool Export();

    /// Loads all of the source's tracks into its play queue; false when there is no track `aIndex`.
    bool ChangePlayQueue(uint aIndex) { return m_Media.ChangePlayQueue(aIndex); }

    /// A new preset is there to be stored.
    void PublishPreset();
    /// The preset that is there has changed.
    void UpdatePreset(const QString& aStateData, const QString& aSecondaryData);
    void UpdatePresetSecondaryData(const QString& aSecondaryData);

    // The methods of the interface.
    /// Returns 0, or 1 when the data names no "preset_id".
    uint ActivatePreset(const QMap<QString, QString>& aPreset);
    QStringList GetCapabilities() const { return m_Media.Paths().keys(); }
    QDBusObjectPath GetCapability(const QString& aName);
    QString GetDeviceBusNumber() const { return m_Identity.busNumber; }
    QString GetDeviceId() const { return m_Identity.deviceId; }
    QString GetDevicePath() const { return m_Identity.devicePath; }
    /// Parameter text with the keys of MPL_SOURCE_STATUS_KEYS; "error_type" only while there is an error.
    QString GetMediaSourceStatus() const;
    QMap<QString, QString> GetPresetContext() const { return m_Preset; }
    QString GetSourceName() const { return m_Identity.name; }
    QString GetSourceType() const { return m_Identity.type; }
    void RemoteMessageReceived(const QVariantMap& aMessage);

private Q_SLOTS:
    void ActiveSourceChanged(const QString& aServiceName, const QString& aObjectPath);

private:
    void AnnounceStatus();
    void AnnounceUpdate(const QString& aPreviousState);
    void TellWatchers(bool aAdded);

    QDBusConnection m_Bus;
    MediaSourceAdaptor* m_Adaptor;
    SourceIdentity m_Identity;
    SourceCapabilities m_Media;
    QMap<QString, QString> m_Preset;
    uint m_LastPreset = 0;
    QString m_ErrorType;
    bool m_Active = false;
    bool m_Exported = false;
};

} // namespace sim
