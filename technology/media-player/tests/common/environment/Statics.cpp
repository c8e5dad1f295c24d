// The exported constants and the static members: all that the environment controller keeps.
#include "Constants.h"
#include <MPL_TestEnvironment.h>

const QString kMPLDefaultEnvironment = QStringLiteral("/var/talvex/media-player/test/");
const QString kMPLDataManagerDb = QStringLiteral("/var/talvex/media-player/test/DataManagerDb.sqlite");

const QString TEST_MEDIA_SMALLMUSIC_NAME = QStringLiteral("SMALLMUSIC");
const QString TEST_MEDIA_LARGEMUSIC_NAME = QStringLiteral("LARGEMUSIC");
const QString TEST_MEDIA_MODIFIED_METADATA_NAME = QStringLiteral("MODIFIED_MD");

const QString TEST_SOURCE_1_DEVICE_ID = QStringLiteral("00000001");
const QString TEST_SOURCE_2_DEVICE_ID = QStringLiteral("00000002");
const QString TEST_SOURCE_3_DEVICE_ID = QStringLiteral("00000003");
const int EXPECTED_NUMBER_OF_TEST_MEDIA_SOURCE = 3;

QString MPL_TestEnvironment::m_EnvironmentDirectory = kMPLDefaultEnvironment;
QString MPL_TestEnvironment::m_PandoraUserName = MPL_TEST_PANDORA_USER_NAME_1;
QString MPL_TestEnvironment::m_PandoraPassword = MPL_TEST_PANDORA_PASSWORD_1;
QDBusConnection MPL_TestEnvironment::m_TestDbusConnection{MPL_TEST_INVALID_DBUS_NAME};
