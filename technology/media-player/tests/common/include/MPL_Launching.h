/// @file
/// Bringing sources up, and finding them, in words: the launches of MPL_TestEnvironment with options that
/// have names and defaults, and answers that say what is wrong.
///
///     ASSERT_TRUE(MPL::LaunchSource("media_source_disc"));
///     ASSERT_TRUE(MPL::LaunchTestSource());
///     ASSERT_TRUE(MPL::ManagerLists({MPL::MPL_DISC_SERVICE_NAME, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME}));
///     const MPL::ServiceObject disc = MPL::SourceOf(MPL::MPL_DISC_SERVICE_NAME);
///
/// All of it belongs to the thread that runs the suite, and blocks.
#pragma once

#include <MPL_ServiceObject.h>
#include <MPL_TestSourceCapability.h>

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace MPL
{

/// How a source is launched.
struct LaunchOptions {
    /// Forget first which source was active, and what it played.
    bool resetActiveSource = true;
    /// Start the data-manager library for that; without it the program must have done so itself.
    bool activateDataManager = true;
    /// Let the source log each call that it serves.
    bool verbose = false;
};

/// How the test media source is launched.
struct TestSourceOptions {
    /// What its sources offer.
    TestSourceCapabilities capabilities = TestSourceCapability::None;
    /// Fill their play queues at once.
    bool createPlayQueue = false;
    /// Forget first which source was active, and what it played.
    bool resetActiveSource = true;
    /// Start the data-manager library for that; without it the program must have done so itself.
    bool activateDataManager = true;
};

/// Starts one of the media sources of MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES, by the name of its process, and
/// waits up to 20 seconds for its bus name. Fails with the known names for any other. As
/// LaunchMediaSourceProcess() does, it starts a source anew that runs already.
[[nodiscard]] testing::AssertionResult LaunchSource(const QString& aProcess,
                                                    const LaunchOptions& aOptions = {});

/// Starts the test media source unless it runs, and waits up to 20 seconds for its bus name; one that does
/// not appear also fails the running test.
[[nodiscard]] testing::AssertionResult LaunchTestSource(const TestSourceOptions& aOptions = {});

/// Waits until the media manager lists a source of each of these services; a service named twice needs two.
/// Fails with the list that it has after `aLimitMs` milliseconds, or at once without a media manager.
[[nodiscard]] testing::AssertionResult ManagerLists(const QStringList& aServiceNames, int aLimitMs = 10000);

/// The first source of this service that the media manager lists, waiting for one as ManagerLists() does.
/// Without one the running test gets a non-fatal failure at the line of the call, and the result is empty.
ServiceObject SourceOf(const QString& aServiceName, const char* aFile = __builtin_FILE(),
                       int aLine = __builtin_LINE());

} // namespace MPL
