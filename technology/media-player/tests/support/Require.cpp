#include "Require.h"

#include <gtest/gtest.h>

void Require(bool aPresent, const QString& aReason)
{
    if (aPresent) {
        return;
    }
    if (qEnvironmentVariable("CI") == QLatin1String("true")) {
        FAIL() << aReason.toStdString();
    }
    GTEST_SKIP() << aReason.toStdString();
}

void RequireSandbox()
{
    Require(!qEnvironmentVariableIsEmpty("MPL_SANDBOX"),
            QStringLiteral("this test needs the sandbox: run it through mpl-sandbox"));
}

void RequireLifecycleManager()
{
    Require(qEnvironmentVariable("MPL_SANDBOX_LIFECYCLE_MANAGER") == QLatin1String("systemd"),
            QStringLiteral("this sandbox has no lifecycle manager; mpl-sandbox prints why at its start"));
}
