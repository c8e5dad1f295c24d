/// The parts of the machine that a test can't do without. Where one is missing the test skips and says why;
/// under CI=true it fails, as nothing is to go untested there unseen. For SetUp():
///
///     void SetUp() override { RequireSandbox(); }
#pragma once

#include <QString>

/// Skips, or under CI=true fails, the running test unless `aPresent`.
void Require(bool aPresent, const QString& aReason);

/// The test runs in a sandbox.
void RequireSandbox();

/// The test's sandbox has a lifecycle manager.
void RequireLifecycleManager();
