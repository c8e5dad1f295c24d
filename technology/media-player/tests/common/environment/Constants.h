// Names that only the library's own source files know: the environment controller's and the ready main's.
#pragma once

#include <MPL_TestEnvironmentNames.h>

#include <QString>

// Internal linkage: a test program may use the same names for constants of its own.

namespace MPL
{

const QString MPL_MEDIA_SOURCE_INTERFACE_NAME = QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource");

} // namespace MPL

// The status text of an indexer that has finished.
const QString MPL_TEST_INDEXING_COMPLETED = QStringLiteral("Indexing Completed");

// Bus names and interfaces.
const QString MPL_TEST_MEDIAMANAGER_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaManagerService");
const QString MPL_TEST_SIMULATION_INTERFACE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSourceFactorySimulation");
const QString MPL_TEST_MME_MOUNT_INTERFACE_NAME = QStringLiteral("com.talvex.DBus.MediaPlayer.MMEMount");

// Programs and files.
const QString MPL_TEST_DATABASE_FILE =
    QStringLiteral("/opt/talvex/bin/test/testdata/media-player/database/test.db");
const QString MPL_TEST_BINARY_DIRECTORY = QStringLiteral("/opt/talvex/bin");
const QString MPL_TEST_MEDIAMANAGER_PROCESS_PATH =
    MPL_TEST_BINARY_DIRECTORY + QLatin1Char('/') + MPL_TEST_MEDIAMANAGER_PROCESS_NAME;
const QString MPL_TEST_MME_PROCESS_PATH =
    MPL_TEST_BINARY_DIRECTORY + QLatin1Char('/') + MPL_TEST_MME_PROCESS_NAME;
const QString MPL_TEST_HMI_MAIN_PROCESS_NAME = QStringLiteral("hmi_main");
const QString MPL_TEST_HMI_CLUSTER_PROCESS_NAME = QStringLiteral("hmi_cluster");
// The installed media-player configuration, and the one written for tests.
const QString MPL_TEST_MPL_CONFIG_FILE = QStringLiteral("/opt/talvex/etc/mplConfig.json");
const QString MPL_TEST_UNIT_CONFIG_FILE = QStringLiteral("/var/talvex/media-player/mplUnitConfig.json");

// The private test bus.
const QString MPL_TEST_DBUS_CONNECTION_NAME = QStringLiteral("MPLTestDbus");
const QString MPL_TEST_DBUS_CONFIG_FILE = QStringLiteral("/opt/talvex/etc/mpl-dbus.conf");
const QString MPL_TEST_DBUS_ADDRESS = QStringLiteral("unix:path=/var/talvex/media-player/testDbus");
const QString MPL_TEST_DBUS_DAEMON_PATH = QStringLiteral("/usr/bin/dbus-daemon");

// Keys of the media-player configuration on the way to the Pandora login.
const QString MPL_TEST_CONFIG_KEY_CONFIG = QStringLiteral("config");
const QString MPL_TEST_CONFIG_KEY_PANDORA = QStringLiteral("pandora");
const QString MPL_TEST_CONFIG_KEY_LOGIN_CONFIG = QStringLiteral("login_config");
const QString MPL_TEST_CONFIG_KEY_LOGIN_TYPE = QStringLiteral("login_type");
const QString MPL_TEST_CONFIG_KEY_USER_NAME = QStringLiteral("user_name");
const QString MPL_TEST_CONFIG_KEY_PASSWORD = QStringLiteral("password");
const QString MPL_TEST_CONFIG_KEY_TRACK_TOKEN = QStringLiteral("track_token");

const QString MPL_TEST_FALSE = QStringLiteral("false");
const QString MPL_TEST_TRUE = QStringLiteral("true");
