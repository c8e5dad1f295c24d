/// @file
/// Waits for a D-Bus signal without a thread, a spy or an event loop of the test's:
///
///     MPL::SignalWaiter added(*manager, &Manager::MediaSourceAdded);       // hears from now on
///     simulator->AddMassStorageDevice("USB stick", "00000004");
///     ASSERT_TRUE(added.Arrives(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME));      // with this first argument
///     const auto [service, path] = added.Last();
///
/// A signal that does not come fails with the list of those that the object sent instead. The proxy stays
/// where it is: the waiter listens on the proxy's connection with a thread of its own.
#pragma once

#include <QDBusAbstractInterface>
#include <QDBusArgument>
#include <QMetaMethod>
#include <QString>
#include <QVariant>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

namespace MPL
{

/// @cond
namespace Detail
{

class SignalListener;

/// Whether the argument can be read as this type: what is packed as another one ends the program.
bool IsReadableAs(const QVariant& aArgument, int aType);

/// A default value where the sender has typed the argument otherwise.
template <typename Value>
Value ReadArgument(const QVariant& aArgument)
{
    return IsReadableAs(aArgument, qMetaTypeId<Value>()) ? qdbus_cast<Value>(aArgument) : Value();
}

/// The part of a waiter that knows no types.
class SignalRecord
{
public:
    /// Reads the arguments of a signal with the types that its description gives them.
    using Reader = std::function<QVariantList(const QVariantList&)>;
    /// Whether these arguments, still as they came, are the awaited ones.
    using Matcher = std::function<bool(const QVariantList&)>;

    SignalRecord(const QDBusAbstractInterface& aProxy, const QMetaMethod& aSignal, int aLimitMs,
                 Reader aReader);
    ~SignalRecord();

    testing::AssertionResult Take(const Matcher& aMatches, const QVariantList& aExpected);

private:
    Q_DISABLE_COPY(SignalRecord)

    QString Text(const QString& aName, const QVariantList& aArguments) const;
    QString Instead() const;

    std::unique_ptr<SignalListener> m_Listener;
    Reader m_Reader;
    QString m_Name;
    int m_LimitMs;
};

} // namespace Detail
/// @endcond

/// Hears one signal of a proxy's object from its construction to its destruction. Use it on one thread.
template <typename... Arguments>
class SignalWaiter
{
public:
    /// What the signal carries.
    using Values = std::tuple<std::decay_t<Arguments>...>;

    /// Waits later for at most `aLimitMs` milliseconds. Does not block. The proxy need not outlive the
    /// waiter.
    template <typename Proxy>
    SignalWaiter(const QDBusAbstractInterface& aProxy, void (Proxy::*aSignal)(Arguments...),
                 int aLimitMs = 5000)
        : m_Record(aProxy, QMetaMethod::fromSignal(aSignal), aLimitMs,
                   [](const QVariantList& aArguments) { return ToList(Read(aArguments, kIndices)); })
    {
    }

    /// Whether a signal has arrived whose first arguments equal `aExpected`. Blocks until one does, or the
    /// limit has passed; then the message says what the object sent instead. Each signal is found once: the
    /// next call waits for another one.
    template <typename... Expected>
    [[nodiscard]] testing::AssertionResult Arrives(const Expected&... aExpected)
    {
        static_assert(sizeof...(Expected) <= sizeof...(Arguments), "the signal has fewer arguments");
        return Match(std::make_index_sequence<sizeof...(Expected)>(), aExpected...);
    }

    /// The arguments of the signal that the last successful Arrives() found; default values before.
    const Values& Last() const { return m_Last; }

private:
    static constexpr std::index_sequence_for<Arguments...> kIndices{};

    template <std::size_t... Indices>
    static Values Read(const QVariantList& aArguments, std::index_sequence<Indices...>)
    {
        return Values{
            Detail::ReadArgument<std::tuple_element_t<Indices, Values>>(aArguments.value(Indices))...};
    }

    template <typename Tuple>
    static QVariantList ToList(const Tuple& aValues)
    {
        return std::apply([](const auto&... aValue) { return QVariantList{QVariant::fromValue(aValue)...}; },
                          aValues);
    }

    template <std::size_t... Indices, typename... Expected>
    testing::AssertionResult Match(std::index_sequence<Indices...>, const Expected&... aExpected)
    {
        const std::tuple<std::tuple_element_t<Indices, Values>...> expected{aExpected...};
        const auto matches = [&](const QVariantList& aArguments) {
            Values values = Read(aArguments, kIndices);
            const bool equal = ((std::get<Indices>(values) == std::get<Indices>(expected)) && ...);
            if (equal) {
                m_Last = std::move(values);
            }
            return equal;
        };
        return m_Record.Take(matches, ToList(expected));
    }

    Detail::SignalRecord m_Record;
    Values m_Last{};
};

} // namespace MPL
