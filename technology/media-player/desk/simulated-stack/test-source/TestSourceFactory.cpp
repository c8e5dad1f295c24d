#include "TestSourceFactory.h"

#include "sim_MediaSourceFactorySimulationAdaptor.h"
#include <MPL_TestEnvironmentNames.h>

#include <algorithm>
#include <utility>

namespace sim
{
namespace
{

constexpr int kSourcesAtStart = 3;

QString Root()
{
    return QStringLiteral("/com/talvex/DBus/Examples/MediaSourceTest");
}

// A device id may hold any characters, an object path may not.
QString PathOf(const QString& aDeviceId)
{
    QString path = Root() + QStringLiteral("/Device_");
    for (const char byte : aDeviceId.toUtf8()) {
        const bool plain =
            (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        path += plain ? QString(QLatin1Char(byte))
                      : QStringLiteral("_%1").arg(static_cast<uchar>(byte), 2, 16, QLatin1Char('0'));
    }
    return path;
}

} // namespace

TestSourceFactory::TestSourceFactory(const FaultPlan& aFaults, const QDBusConnection& aBus,
                                     QStringList aCapabilities, bool aDefaultPlayQueue)
    : Object(aFaults),
      m_Bus(aBus),
      m_Adaptor(Adapt<MediaSourceFactorySimulationAdaptor>(this)),
      m_Capabilities(std::move(aCapabilities)),
      m_DefaultPlayQueue(aDefaultPlayQueue)
{
}

TestSourceFactory::~TestSourceFactory() = default;

bool TestSourceFactory::Export()
{
    if (!m_Bus.registerObject(Root() + QStringLiteral("/Simulation"), this)) {
        return false;
    }
    for (int i = 1; i <= kSourcesAtStart; ++i) {
        if (!AddSource(QStringLiteral("TestSource%1").arg(i),
                       QStringLiteral("%1").arg(i, 8, 10, QLatin1Char('0')))) {
            return false;
        }
    }
    return true;
}

bool TestSourceFactory::AddSource(const QString& aName, const QString& aDeviceId)
{
    SourceSetup media;
    media.capabilities = m_Capabilities;
    media.defaultPlayQueue = m_DefaultPlayQueue;
    SourceIdentity identity;
    identity.serviceName = MPL_TEST_MEDIA_SOURCE_SERVICE_NAME;
    identity.objectPath = PathOf(aDeviceId);
    identity.name = aName;
    identity.type = QStringLiteral("MassStorage");
    identity.deviceId = aDeviceId;
    identity.busNumber = QString::number(++m_LastBusNumber);
    auto source = std::make_unique<MediaSource>(Faults(), m_Bus, std::move(identity), std::move(media));
    const bool exported = source->Export();
    m_Sources.push_back(std::move(source));
    return exported;
}

void TestSourceFactory::AddMassStorageDevice(const QString& aSourceName, const QString& aDeviceId)
{
    if (aSourceName.isEmpty() || aDeviceId.isEmpty()) {
        Refuse(QStringLiteral("a device needs a name and an id"));
    } else if (Find(aDeviceId) != m_Sources.end()) {
        Refuse(QStringLiteral("device \"%1\" is there already; remove it first").arg(aDeviceId));
    } else if (!AddSource(aSourceName, aDeviceId)) {
        Refuse(QStringLiteral("device \"%1\" can't be exported").arg(aDeviceId));
    }
}

void TestSourceFactory::RemoveMassStorageDevice(const QString& aSourceName, const QString& aDeviceId)
{
    const auto source = Find(aDeviceId);
    if (source == m_Sources.end() || (*source)->Identity().name != aSourceName) {
        Refuse(QStringLiteral("there is no device \"%1\" called \"%2\"").arg(aDeviceId, aSourceName));
        return;
    }
    m_Sources.erase(source);
}

void TestSourceFactory::PublishPresetData()
{
    if (MediaSource* source = Addressed()) {
        source->PublishPreset();
    }
}

void TestSourceFactory::UpdatePresetStateData(const QString& aStateData, const QString& aSecondaryData)
{
    if (MediaSource* source = Addressed()) {
        source->UpdatePreset(aStateData, aSecondaryData);
    }
}

void TestSourceFactory::UpdatePresetSecondaryData(const QString& aSecondaryData)
{
    if (MediaSource* source = Addressed()) {
        source->UpdatePresetSecondaryData(aSecondaryData);
    }
}

void TestSourceFactory::ChangePlayQueue(uint aIndex)
{
    MediaSource* source = Addressed();
    if (source != nullptr && !source->ChangePlayQueue(aIndex)) {
        Refuse(QStringLiteral("there is no track %1").arg(aIndex));
    }
}

TestSourceFactory::Sources::iterator TestSourceFactory::Find(const QString& aDeviceId)
{
    return std::find_if(m_Sources.begin(), m_Sources.end(), [&aDeviceId](const auto& aSource) {
        return aSource->Identity().deviceId == aDeviceId;
    });
}

MediaSource* TestSourceFactory::Addressed()
{
    if (m_Sources.empty()) {
        Refuse(QStringLiteral("all devices have been removed; add one first"));
        return nullptr;
    }
    const auto active = std::find_if(m_Sources.begin(), m_Sources.end(),
                                     [](const auto& aSource) { return aSource->IsActive(); });
    return (active == m_Sources.end() ? m_Sources.front() : *active).get();
}

} // namespace sim
