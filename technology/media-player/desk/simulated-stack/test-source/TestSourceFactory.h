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
    /// The sources offer `capabilities`; with `defaultPlayQueue` their play queues are filled at once.
    TestSourceFactory(const FaultPlan& faults, const QDBusConnection& bus, QStringList capabilities,
                      bool defaultPlayQueue);
    ~TestSourceFactory() override;

    /// Exports the simulation object and the sources that are there from the start.
    bool Export();

    // The methods of the interface. Those without a device speak of the active source of this program, or of
    // its first one while none is active.
    void AddMassStorageDevice(const QString& sourceName, const QString& deviceId);
    void RemoveMassStorageDevice(const QString& sourceName, const QString& deviceId);
    void PublishPresetData();
    void UpdatePresetStateData(const QString& stateData, const QString& secondaryData);
    void UpdatePresetSecondaryData(const QString& secondaryData);
    void ChangePlayQueue(uint index);

private:
    using Sources = std::vector<std::unique_ptr<MediaSource>>;

    bool AddSource(const QString& name, const QString& deviceId);
    Sources::iterator Find(const QString& deviceId);
    MediaSource* Addressed();

    QDBusConnection m_Bus;
    MediaSourceFactorySimulationAdaptor* m_Adaptor;
    QStringList m_Capabilities;
    bool m_DefaultPlayQueue;
    uint m_LastBusNumber = 0;
    Sources m_Sources;
};

} // namespace sim
