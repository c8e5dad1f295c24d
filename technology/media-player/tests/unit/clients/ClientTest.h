// Base of the client tests: a service on the test bus.
#pragma once

#include "BusesTest.h"
#include "FakeService.h"
#include <MPL_MediaManagerAbstractClient.h>
#include <MPL_TestFixture.h>

#include <QMutexLocker>
#include <QSemaphore>

#include <memory>

class ClientTest : public MPL::Doubles::BusesTest
{
protected:
    ClientTest()
    {
        MPL::RegisterAllMetaTypes();
        UseTestBus();
    }

    inline static const QString kServiceName = "com.talvex.Test.Clients";
    inline static const QString kPath = "/object";
    static constexpr int kLimitMs = 10000;

    MPL::Doubles::FakeService m_Service{MPL::Doubles::SharedBus().Address(), kServiceName};
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
