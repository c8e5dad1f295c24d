// Base of the client tests: a bus of the test suite's own as shared connection, and a service on it.
#pragma once

#include "DoublesTest.h"
#include "FakeService.h"
#include "PrivateBus.h"
#include <MPL_MediaManagerAbstractClient.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestFixture.h>

#include <QMutexLocker>
#include <QSemaphore>

#include <memory>

class ClientTest : public MPL::Doubles::DoublesTest
{
protected:
    static void SetUpTestSuite()
    {
        MPL::RegisterAllMetaTypes();
        s_Bus = std::make_unique<MPL::Doubles::PrivateBus>();
    }
    static void TearDownTestSuite()
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("clients"));
        s_Bus.reset();
    }
    ClientTest() : m_Service(s_Bus->Address(), kServiceName)
    {
        MPL_TestEnvironment::m_TestDbusConnection =
            QDBusConnection::connectToBus(s_Bus->Address(), QStringLiteral("clients"));
    }

    inline static const QString kServiceName = QStringLiteral("com.talvex.Test.Clients");
    inline static const QString kPath = QStringLiteral("/object");
    inline static std::unique_ptr<MPL::Doubles::PrivateBus> s_Bus;
    static constexpr int kLimitMs = 10000;

    MPL::Doubles::FakeService m_Service;
};

// A fixture as a test sees it, outside googletest's hands.
class OneTest : public MPL::TestFixture
{
public:
    bool Waits()
    {
        const QMutexLocker locker(&m_Mutex);
        return m_Waiting;
    }

private:
    void TestBody() override {}
};

inline ComTalvexDBusMediaPlayerMediaManagerInterface* NewManagerProxy(const QString& aService,
                                                                      const QString& aPath)
{
    return new ComTalvexDBusMediaPlayerMediaManagerInterface(aService, aPath,
                                                             MPL_TestEnvironment::GetDbusConnection());
}
