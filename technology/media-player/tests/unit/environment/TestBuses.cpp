#include "TestBuses.h"

#include "PrivateBus.h"
#include <MPL_TestEnvironment.h>

#include <memory>

namespace
{

class Buses : public testing::Environment
{
public:
    void SetUp() override
    {
        m_Bus = std::make_unique<MPL::Doubles::PrivateBus>();
        ASSERT_NE(m_Bus->Address(), QString());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_Bus->Address().toUtf8());
    }
    void TearDown() override
    {
        MPL_TestEnvironment::m_TestDbusConnection = QDBusConnection(QString());
        m_Bus.reset();
    }

    QString Address() const { return m_Bus->Address(); }

private:
    std::unique_ptr<MPL::Doubles::PrivateBus> m_Bus;
};

Buses* const kSBuses = new Buses;
const testing::Environment* const kSRegistered = testing::AddGlobalTestEnvironment(kSBuses);

} // namespace

QString BusAddress()
{
    return kSBuses->Address();
}

void BusesTest::UseTestBus()
{
    MPL_TestEnvironment::m_TestDbusConnection =
        QDBusConnection::connectToBus(BusAddress(), QStringLiteral("MPLTestDbus"));
}

void BusesTest::UseSystemBus()
{
    MPL_TestEnvironment::m_TestDbusConnection = QDBusConnection::systemBus();
}
