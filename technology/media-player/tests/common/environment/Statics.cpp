// The exported constants and the static members: all that the environment controller keeps.
#include <MPL_TestEnvironment.h>

// They are initialised before a test program's own static objects, which may use them, also where the library
// is linked statically. Only the words are there earlier.
#define MPL_INITIALISED_EARLY __attribute__((init_priority(200)))

MPL_INITIALISED_EARLY const QString kMPLDefaultEnvironment = QStringLiteral("/var/talvex/media-player/test/");
MPL_INITIALISED_EARLY const QString kMPLDataManagerDb =
    QStringLiteral("/var/talvex/media-player/test/DataManagerDb.sqlite");

MPL_INITIALISED_EARLY const QString TEST_MEDIA_SMALLMUSIC_NAME = QStringLiteral("SMALLMUSIC");
MPL_INITIALISED_EARLY const QString TEST_MEDIA_LARGEMUSIC_NAME = QStringLiteral("LARGEMUSIC");
MPL_INITIALISED_EARLY const QString TEST_MEDIA_MODIFIED_METADATA_NAME = QStringLiteral("MODIFIED_MD");

MPL_INITIALISED_EARLY const QString TEST_SOURCE_1_DEVICE_ID = QStringLiteral("00000001");
MPL_INITIALISED_EARLY const QString TEST_SOURCE_2_DEVICE_ID = QStringLiteral("00000002");
MPL_INITIALISED_EARLY const QString TEST_SOURCE_3_DEVICE_ID = QStringLiteral("00000003");
const int EXPECTED_NUMBER_OF_TEST_MEDIA_SOURCE = 3;

// The connection held before any bus is chosen; no connection is ever opened under this name.
MPL_INITIALISED_EARLY static const QString MPL_TEST_INVALID_DBUS_NAME = QStringLiteral("InvalidDbus");

MPL_INITIALISED_EARLY QString MPL_TestEnvironment::m_EnvironmentDirectory = kMPLDefaultEnvironment;
MPL_INITIALISED_EARLY QString MPL_TestEnvironment::m_PandoraUserName = MPL_TEST_PANDORA_USER_NAME_1;
MPL_INITIALISED_EARLY QString MPL_TestEnvironment::m_PandoraPassword = MPL_TEST_PANDORA_PASSWORD_1;
MPL_INITIALISED_EARLY QDBusConnection MPL_TestEnvironment::m_TestDbusConnection{MPL_TEST_INVALID_DBUS_NAME};
