#include "Require.h"

namespace
{

class InSandbox : public testing::Environment
{
    void SetUp() override
    {
        Require(!qEnvironmentVariableIsEmpty("MPL_SANDBOX"),
                "this program needs the sandbox: run it through mpl-sandbox");
    }
};

} // namespace

void Require(bool aPresent, const QString& aReason)
{
    if (aPresent) {
        return;
    }
    if (qEnvironmentVariable("CI") == "true") {
        FAIL() << aReason.toStdString();
    }
    GTEST_SKIP() << aReason.toStdString();
}

testing::Environment* RequireSandbox()
{
    return testing::AddGlobalTestEnvironment(new InSandbox);
}

void RequireLifecycleManager()
{
    Require(qEnvironmentVariable("MPL_SANDBOX_LIFECYCLE_MANAGER") == "systemd",
            "this sandbox has no lifecycle manager; mpl-sandbox prints why at its start");
}
