/// The simulated mount service: a list of device records, nothing is really mounted.
#pragma once

#include "Object.h"

#include <QDBusConnection>
#include <QList>
#include <QVariantMap>

class MMEMountAdaptor;

namespace sim
{

class MountService : public Object
{
    Q_OBJECT

public:
    explicit MountService(const FaultPlan& aFaults);

    bool Export(QDBusConnection aBus);

    /// Adds the record of an existing folder. Refuses anything else, and a folder that is mounted.
    void MountPath(const QString& aPath);
    /// Removes the record. Refuses a path that is not mounted.
    void Dismount(const QString& aPath);
    /// In the order of mounting.
    QList<QVariantMap> GetMountedDeviceList() const { return m_Devices; }

private:
    int IndexOf(const QString& aPath) const;

    MMEMountAdaptor* m_Adaptor;
    QList<QVariantMap> m_Devices;
    uint m_LastId = 0;
};

} // namespace sim
