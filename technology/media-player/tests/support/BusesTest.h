/// Base of the unit tests' fixtures that need a real bus daemon: the program's shared one takes the place of
/// the system bus and of the private test bus.
///
///     class SourceQueries : public BusesTest
///     {
///         SourceQueries() { UseTestBus(); }
///         FakeService m_Service{SharedBus().Address(), "com.talvex.Test.Source"};
///     };
#pragma once

#include "DoublesTest.h"
#include "PrivateBus.h"
#include <MPL_TestEnvironment.h>

namespace MPL::Doubles
{

class BusesTest : public DoublesTest
{
protected:
    BusesTest() { qputenv("DBUS_SYSTEM_BUS_ADDRESS", SharedBus().Address().toUtf8()); }
    ~BusesTest() override { MPL_TestEnvironment::m_TestDbusConnection = QDBusConnection(QString()); }

    /// Makes the shared connection what it is after the private bus was launched, or without one.
    static void UseTestBus()
    {
        MPL_TestEnvironment::m_TestDbusConnection =
            QDBusConnection::connectToBus(SharedBus().Address(), "MPLTestDbus");
    }
    static void UseSystemBus() { MPL_TestEnvironment::m_TestDbusConnection = QDBusConnection::systemBus(); }
};

} // namespace MPL::Doubles
