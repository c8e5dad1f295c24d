/// @file
/// A fixture that brings the media-player environment up for a whole test case, and hands the stack back to
/// the lifecycle manager after it:
///
///     class Sources : public MPL::MediaSourceTestFixture {};
///
///     TEST_F(Sources, ComeAndGo)   // the mount service and the media manager run, nothing else does
#pragma once

#include <MPL_TestFixture.h>

namespace MPL
{

/// Base of the tests of media sources.
class MediaSourceTestFixture : public TestFixture
{
public:
    /// Registers the value types, has the lifecycle manager stop the production services, sterilises the
    /// environment, empties the default environment directory and launches the mount service and the media
    /// manager. Failures on the way are logged and passed over; display processes that stay and a media
    /// manager that can't be launched are fatal failures of the test case. Blocks for all of it: a few
    /// seconds, or minutes when processes resist.
    static void SetUpTestCase();

    /// Sterilises the environment, empties the environment directory and has the lifecycle manager start the
    /// production services. Every step is made; a failure is logged at critical level. Blocks for all of it.
    static void TearDownTestCase();

    /// For test programs to switch their own output with; not read here.
    static bool sm_Verbose;
};

} // namespace MPL
