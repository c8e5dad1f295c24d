#include <MPL_MediaSourceTestFixture.h>
#include <MPL_TestEnvironment.h>

#include <QDebug>

namespace MPL
{

bool MediaSourceTestFixture::sm_Verbose = false;

void MediaSourceTestFixture::SetUpTestCase()
{
    TestFixture::SetUpTestCase();
    qDebug()
        << "MediaSourceTestFixture::SetUpTestCase -- Register metatypes, use SLM to stop media services, "
           "SterilizeEnvironment, and SetEnvironment";
    RegisterAllMetaTypes();
    // The result does not matter: see "Kept on purpose" in docs/architecture.md.
    static_cast<void>(MPL_TestEnvironment::SlmStopMediaServices());
    if (!MPL_TestEnvironment::SterilizeEnvironment(true)) {
        qDebug() << "MediaSourceTestFixture::SetUpTestCase - Error calling "
                    "TestEnvironment::SterilizeEnvironment. Attempting to continue anyways.";
    }
    if (!MPL_TestEnvironment::SetEnvironment(kMPLDefaultEnvironment, true)) {
        qDebug() << "MediaSourceTestFixture::SetUpTestCase - Failure setting environment to "
                 << kMPLDefaultEnvironment;
    }
    // clang-format off
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess( true ));
    // clang-format on
}

void MediaSourceTestFixture::TearDownTestCase()
{
    TestFixture::TearDownTestCase();
    qDebug() << "MediaSourceTestFixture::TearDownTestCase -- SterilizeEnvironment, CleanEnvironment, and "
                "launch media services using SLM";
    if (!MPL_TestEnvironment::SterilizeEnvironment(true)) {
        qCritical() << "MediaSourceTestFixture::TearDownTestCase - SterilizeEnvironment Reported a failure.";
    }
    if (!MPL_TestEnvironment::CleanEnvironment()) {
        qCritical() << "MediaSourceTestFixture::TearDownTestCase - CleanEnvironment Reported a failure.";
    }
    if (!MPL_TestEnvironment::SlmLaunchMediaServices(true)) {
        qCritical()
            << "MediaSourceTestFixture::TearDownTestCase - SlmLaunchMediaServices Reported a failure.";
    }
}

} // namespace MPL
