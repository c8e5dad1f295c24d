/// The example media source built for testing: a few media sources, and the simulation object with which a
/// test makes more of them come and go and drives their presets and play queue.
#pragma once

#include "MediaSource.h"
#include "Object.h"

#include <QDBusConnection>
#include <QStringList>

#include <memory>
#include <vector>

class MediaSourceFactorySimulationAdaptor;

namespace sim
{

class TestSourceFactory : public Object
{
    Q_OBJECT

public:
    /// The sources offer `aCapabilities`; with `aDefaultPlayQueue` their play queues are filled at once.
    TestSourceFactory(const FaultPlan& aFaults, const QDBusConnection& aBus, QStringList aCapabilities,
                      bool aDefaultPlayQueue);
    ~TestSourceFactory() override;

    /// Exports the simulation object and the sources that are there from the start.
    bool Export();

    // The methods of the interface. Those without a device speak of the active source of this program, or of
    // its first one while none is active.
    void AddMassStorageDevice(const QString& aSourceName, const QString& aDeviceId);
    void RemoveMassStorageDevice(const QString& aSourceName, const QString& aDeviceId);
    void PublishPresetData();
    void UpdatePresetStateData(const QString& aStateData, const QString& aSecondaryData);
    void UpdatePresetSecondaryData(const QString& aSecondaryData);
    void ChangePlayQueue(uint aIndex);

private:
    using Sources = std::vector<std::unique_ptr<MediaSource>>;

    bool AddSource(const QString& aName, const QString& aDeviceId);
    Sources::iterator Find(const QString& aDeviceId);
    MediaSource* Addressed();

    QDBusConnection m_Bus;
    MediaSourceFactorySimulationAdaptor* m_Adaptor;
    QStringList m_Capabilities;
    bool m_DefaultPlayQueue;
    uint m_LastBusNumber = 0;
    Sources m_Sources;
};

} // namespace sim
