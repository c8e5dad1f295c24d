#include "DoublesTest.h"

#include <MPL_TestEnvironment.h>

namespace MPL::Doubles
{

DoublesTest::DoublesTest()
{
    MPL_TestEnvironment::m_EnvironmentDirectory = kMPLDefaultEnvironment;
    MPL_TestEnvironment::m_PandoraUserName = MPL_TEST_PANDORA_USER_NAME_1;
    MPL_TestEnvironment::m_PandoraPassword = MPL_TEST_PANDORA_PASSWORD_1;
    MPL_TestEnvironment::m_TestDbusConnection = QDBusConnection("InvalidDbus");
}

DoublesTest::~DoublesTest()
{
    // What the test set up may refer to the test's own variables.
    VirtualTime::Reset();
    World() = {};
    Starts() = {};
}

} // namespace MPL::Doubles
