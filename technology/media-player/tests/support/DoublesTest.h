/// Base of the unit tests' fixtures: each test starts with a fresh world, no notes, the clock at zero and the
/// environment controller as at load; the log goes into the notes.
///
///     using KillMediaProcess = DoublesTest;
///
///     TEST_F(KillMediaProcess, SignalsOnce)
///     {
///         EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess("media_mme"));
///         EXPECT_EQ(Text(Notes("kill")), "kill media_mme TERM");
///     }
#pragma once

#include "Journal.h"
#include "LogRecorder.h"
#include "PlatformDoubles.h"
#include "ProcessDoubles.h"
#include "VirtualTime.h"

#include <gtest/gtest.h>

namespace MPL::Doubles
{

class DoublesTest : public testing::Test
{
protected:
    DoublesTest();
    ~DoublesTest() override;

private:
    LogRecorder m_Log;
};

} // namespace MPL::Doubles
