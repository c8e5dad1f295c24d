// The main of our own test programs: no bus of the machine is within their reach. In a sandbox the buses are
// its own.
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("MPL_SANDBOX")) {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/system-bus");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/session-bus");
    }
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
