/// @file
/// Keys of a device-information record.
#pragma once

#include <QString>

#include <array>

namespace MPL
{

/// @{
/// Keys of the record.
inline const QString MPL_DEVICE_INFO_KEY_DEVICE_ID = QStringLiteral("DEVICE_ID");
inline const QString MPL_DEVICE_INFO_KEY_DEVICE_TYPE = QStringLiteral("DEVICE_TYPE");
inline const QString MPL_DEVICE_INFO_KEY_DEVICE_NAME = QStringLiteral("DEVICE_NAME");
inline const QString MPL_DEVICE_INFO_KEY_DEVICE_PATH = QStringLiteral("DEVICE_PATH");
inline const QString MPL_DEVICE_INFO_KEY_DEVICE_BUS_NUMBER = QStringLiteral("DEVICE_BUS_NUMBER");
inline const std::array MPL_DEVICE_INFO_KEYS{MPL_DEVICE_INFO_KEY_DEVICE_ID, MPL_DEVICE_INFO_KEY_DEVICE_TYPE,
                                             MPL_DEVICE_INFO_KEY_DEVICE_NAME, MPL_DEVICE_INFO_KEY_DEVICE_PATH,
                                             MPL_DEVICE_INFO_KEY_DEVICE_BUS_NUMBER};
/// @}

} // namespace MPL
