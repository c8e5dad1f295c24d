#include <MPL_DBusAssertions.h>
#include <MPL_TestPrinters.h>

namespace MPL
{

testing::AssertionResult Replied(const QDBusPendingCall& aCall)
{
    QDBusPendingCall call = aCall;
    call.waitForFinished();
    return Detail::NotRefused(call.error());
}

namespace Detail
{

testing::AssertionResult NotRefused(const QDBusError& aError)
{
    if (!aError.isValid()) {
        return testing::AssertionSuccess() << "the call was answered";
    }
    return testing::AssertionFailure() << testing::PrintToString(aError);
}

void AddFailureOf(const testing::AssertionResult& aResult, const char* aFile, int aLine)
{
    if (!aResult) {
        ADD_FAILURE_AT(aFile, aLine) << "there is no value: " << aResult.message();
    }
}

} // namespace Detail

} // namespace MPL
