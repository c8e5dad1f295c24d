/// @file
/// Assertions on D-Bus calls and signals whose failures say what went wrong:
///
///     MPL::SignalWaiter active(*manager, &Manager::ActiveMediaSourceChanged);
///     EXPECT_TRUE(MPL::Replied(manager->SetActiveMediaSource(disc))); // … NoReply (org.…): "…"
///     EXPECT_TRUE(active.Arrives(disc.serviceName));                  // … arrived instead: …
///     EXPECT_EQ(MPL::ValueOf(manager->GetActiveMediaSource()).serviceName, disc.serviceName);
///
/// Call them on the thread that made the proxy. A pending reply is waited for, which blocks the calling
/// thread until the proxy's D-Bus time-out at most: 25 seconds, unless QDBusAbstractInterface::setTimeout()
/// says otherwise.
#pragma once

#include <MPL_SignalWaiter.h>

#include <QDBusPendingCall>
#include <QDBusReply>

#include <gtest/gtest.h>

namespace MPL
{

/// Whether the call was answered with what it was made to return. If not, the message has the error's name
/// and text. Waits for the reply.
[[nodiscard]] testing::AssertionResult Replied(const QDBusPendingCall& aCall);

/// @cond
namespace Detail
{

testing::AssertionResult NotRefused(const QDBusError& aError);
void AddFailureOf(const testing::AssertionResult& aResult, const char* aFile, int aLine);

} // namespace Detail
/// @endcond

/// The same for a reply that was waited for already.
template <typename Value>
[[nodiscard]] testing::AssertionResult Replied(const QDBusReply<Value>& aReply)
{
    return Detail::NotRefused(aReply.error());
}

/// The (first) value of a reply, pending or not. Without one the running test gets a non-fatal failure at the
/// line of the call, with the error's name and text, and the result is a default value. Waits for the reply.
template <typename Reply>
auto ValueOf(const Reply& aReply, const char* aFile = __builtin_FILE(), int aLine = __builtin_LINE())
{
    Detail::AddFailureOf(Replied(aReply), aFile, aLine);
    return aReply.value();
}

} // namespace MPL
