/// The parts of the machine that tests can't do without. Where one is missing they skip and say why; under
/// CI=true they fail, as nothing is to go untested there unseen.
///
///     const testing::Environment* const kSandbox = RequireSandbox(); // once, beside the tests
///     …
///     void SetUp() override { RequireLifecycleManager(); }
#pragma once

#include <QString>

#include <gtest/gtest.h>

/// Skips, or under CI=true fails, the running test unless `aPresent`.
void Require(bool aPresent, const QString& aReason);

/// No test of the program runs outside a sandbox.
testing::Environment* RequireSandbox();

/// The test's sandbox has a lifecycle manager.
void RequireLifecycleManager();
