/// @file
/// Lets googletest print Qt's types and the stack's value types as text, compare those of the stack that have
/// no comparison of their own, and name the tests of a parametrised suite after their parameters:
///
///     #include <MPL_TestPrinters.h>
///
///     EXPECT_EQ(active.value(), disc); // … Which is: ServiceObject("com.…", "/com/…")
///
///     INSTANTIATE_TEST_SUITE_P(Each, Mode, testing::ValuesIn(MPL::MPL_REPEAT_MODES), MPL::ParameterNames());
///
/// Including it is all; no other header of the library does. Include it in every source of a test program or
/// in none, as the linker keeps one way of printing a type. Lists, pairs and tuples of these types print,
/// too.
#pragma once

#include <MPL_Types.h>

#include <QByteArray>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusVariant>
#include <QHash>
#include <QMap>
#include <QString>
#include <QVariant>

#include <gtest/gtest-param-test.h>
#include <gtest/gtest-printers.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>

/// @{
/// Found by googletest. They print text in quotes, variants with their type, errors with the type's name,
/// D-Bus name and message, and replies with what they carry; a pending reply is not waited for.
void PrintTo(const QString& aText, std::ostream* aStream);
void PrintTo(const QByteArray& aBytes, std::ostream* aStream);
void PrintTo(const QVariant& aValue, std::ostream* aStream);
void PrintTo(const QDBusVariant& aValue, std::ostream* aStream);
void PrintTo(const QDBusObjectPath& aPath, std::ostream* aStream);
void PrintTo(QDBusError::ErrorType aType, std::ostream* aStream);
void PrintTo(const QDBusError& aError, std::ostream* aStream);
/// @}

namespace MPL
{

/// @{
/// Found by googletest. They print the type's name and its fields.
void PrintTo(const ServiceObject& aObject, std::ostream* aStream);
void PrintTo(const TransactionId& aId, std::ostream* aStream);
void PrintTo(const BrowserHierarchy& aHierarchy, std::ostream* aStream);
void PrintTo(const BufferedMedia& aMedia, std::ostream* aStream);
/// @}

/// @{
/// Field by field.
bool operator==(const ServiceObject& aLeft, const ServiceObject& aRight);
bool operator!=(const ServiceObject& aLeft, const ServiceObject& aRight);
bool operator==(const BrowserHierarchy& aLeft, const BrowserHierarchy& aRight);
bool operator!=(const BrowserHierarchy& aLeft, const BrowserHierarchy& aRight);
/// @}

/// @cond
namespace Detail
{

std::string NameOfParameter(const std::string& aPrinted);

template <typename Map>
void PrintMap(const Map& aMap, std::ostream* aStream)
{
    *aStream << "{";
    const char* separator = " ";
    for (auto entry = aMap.begin(); entry != aMap.end(); ++entry) {
        *aStream << std::exchange(separator, ", ") << testing::PrintToString(entry.key()) << ": "
                 << testing::PrintToString(entry.value());
    }
    *aStream << " }";
}

template <typename Reply, std::size_t... Indices>
void PrintValues(const Reply& aReply, [[maybe_unused]] std::ostream* aStream, std::index_sequence<Indices...>)
{
    [[maybe_unused]] const char* separator = "";
    ((*aStream << std::exchange(separator, ", ")
               << testing::PrintToString(aReply.template argumentAt<static_cast<int>(Indices)>())),
     ...);
}

} // namespace Detail
/// @endcond

/// Names tests after their parameter as it prints: letters and digits stay, anything else becomes one `_`.
/// The fourth argument of INSTANTIATE_TEST_SUITE_P; googletest ends the program when two parameters get the
/// same name.
struct ParameterNames {
    /// The name of the test with this parameter.
    template <typename Parameter>
    std::string operator()(const testing::TestParamInfo<Parameter>& aInfo) const
    {
        if constexpr (std::is_convertible_v<Parameter, std::string>) {
            return Detail::NameOfParameter(aInfo.param);
        } else {
            return Detail::NameOfParameter(testing::PrintToString(aInfo.param));
        }
    }
};

} // namespace MPL

/// @{
/// Found by googletest: keys with their values, and replies.
template <typename Key, typename Value>
void PrintTo(const QMap<Key, Value>& aMap, std::ostream* aStream)
{
    MPL::Detail::PrintMap(aMap, aStream);
}

template <typename Key, typename Value>
void PrintTo(const QHash<Key, Value>& aHash, std::ostream* aStream)
{
    MPL::Detail::PrintMap(aHash, aStream);
}

template <typename Value>
void PrintTo(const QDBusReply<Value>& aReply, std::ostream* aStream)
{
    *aStream << "QDBusReply(";
    if (!aReply.isValid()) {
        *aStream << testing::PrintToString(aReply.error());
    } else if constexpr (!std::is_void_v<Value>) {
        *aStream << testing::PrintToString(aReply.value());
    }
    *aStream << ")";
}

template <typename... Values>
void PrintTo(const QDBusPendingReply<Values...>& aReply, std::ostream* aStream)
{
    constexpr std::size_t kCount = ((std::is_void_v<Values> ? 0U : 1U) + ... + 0U);
    *aStream << "QDBusPendingReply(";
    if (!aReply.isFinished()) {
        *aStream << "not finished";
    } else if (aReply.isError()) {
        *aStream << testing::PrintToString(aReply.error());
    } else {
        MPL::Detail::PrintValues(aReply, aStream, std::make_index_sequence<kCount>());
    }
    *aStream << ")";
}
/// @}
