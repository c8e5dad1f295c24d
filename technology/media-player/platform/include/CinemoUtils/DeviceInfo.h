/// @file
/// Device record of the media framework. The vehicle's own header replaces this one there.
#pragma once

#include <QString>

namespace CinemoUtils
{

/// What the media framework knows about a device.
struct DeviceInfo {
    /// @{
    /// As the media framework reports them; this library only carries them.
    QString deviceId;
    QString deviceType;
    QString deviceName;
    QString devicePath;
    QString deviceBusNumber;
    /// @}
};

} // namespace CinemoUtils
