#include "MountService.h"

#include "sim_MMEMountAdaptor.h"
#include <MPL_ServiceNames.h>
#include <MPL_SourceWords.h>

#include <QDir>
#include <QFileInfo>

namespace sim
{
namespace
{

QString CleanPath(const QString& aPath)
{
    return aPath.isEmpty() ? aPath : QDir::cleanPath(aPath);
}

} // namespace

MountService::MountService(const FaultPlan& aFaults)
    : Object(aFaults), m_Adaptor(Adapt<MMEMountAdaptor>(this))
{
}

bool MountService::Export(QDBusConnection aBus)
{
    return aBus.registerObject(QStringLiteral("/com/talvex/DBus/MediaPlayer/MMEMount"), this);
}

void MountService::MountPath(const QString& aPath)
{
    const QString folder = CleanPath(aPath);
    if (!QFileInfo(folder).isDir() || !QDir::isAbsolutePath(folder)) {
        Refuse(QStringLiteral("\"%1\" is no folder; give the absolute path of an existing one").arg(aPath));
        return;
    }
    if (IndexOf(folder) >= 0) {
        Refuse(QStringLiteral("\"%1\" is mounted already; dismount it first").arg(aPath));
        return;
    }
    const QVariantMap device{
        {MPL::MPL_DEVICE_RECORD_KEY_DEVICE_ID, QStringLiteral("%1").arg(++m_LastId, 8, 10, QLatin1Char('0'))},
        {MPL::MPL_DEVICE_RECORD_KEY_DEVICE_PATH, folder},
        {MPL::MPL_DEVICE_RECORD_KEY_DEVICE_TYPE, MPL::MPL_MASS_STORAGE_DEVICE_LABEL},
        {MPL::MPL_DEVICE_RECORD_KEY_SERVICE_NAME, MPL::MPL_MASS_STORAGE_SERVICE_NAME},
        {MPL::MPL_DEVICE_RECORD_KEY_OBJECT_PATH, QString()},
        {MPL::MPL_DEVICE_RECORD_KEY_MEDIA_NAME, QFileInfo(folder).fileName()}};
    m_Devices.append(device);
    Announce([this, device] { Q_EMIT m_Adaptor->SignalDeviceMounted(device); });
}

void MountService::Dismount(const QString& aPath)
{
    const int index = IndexOf(CleanPath(aPath));
    if (index < 0) {
        Refuse(QStringLiteral("\"%1\" is not mounted").arg(aPath));
        return;
    }
    const QVariantMap device = m_Devices.takeAt(index);
    Announce([this, device] { Q_EMIT m_Adaptor->SignalDeviceDismounted(device); });
}

int MountService::IndexOf(const QString& aPath) const
{
    for (int i = 0; i < m_Devices.size(); ++i) {
        if (m_Devices.at(i).value(MPL::MPL_DEVICE_RECORD_KEY_DEVICE_PATH) == aPath) {
            return i;
        }
    }
    return -1;
}

} // namespace sim
