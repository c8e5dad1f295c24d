/// @file
/// googlemock's matchers for texts of Qt and for the stack's value types, for test programs that use
/// googlemock:
///
///     #include <MPL_TestMatchers.h>
///
///     EXPECT_THAT(sources, testing::Contains(MPL::IsService(MPL::MPL_DISC_SERVICE_NAME)));
///     EXPECT_THAT(error, MPL::AsText(testing::HasSubstr("no reply")));
///     EXPECT_THAT(track, MPL::HasEntry(MPL::MPL_TRACK_INFO_KEY_TRACK_NAME, "Ebb"));
///
/// Qt's lists are containers to googlemock, and its matchers for containers work on them. Needs googlemock
/// (Debian: libgmock-dev), which no other header of the library does.
#pragma once

#include <MPL_TestPrinters.h>
#include <MPL_Types.h>

#include <QString>
#include <QVariant>

#include <gmock/gmock-matchers.h>

#include <string>

namespace MPL
{

/// Matches a QString whose UTF-8 text a matcher for std::string matches.
template <typename Matcher>
auto AsText(const Matcher& aMatcher)
{
    return testing::ResultOf([](const QString& aText) { return aText.toStdString(); }, aMatcher);
}

/// Matches a ServiceObject of this service, whatever its object.
inline auto IsService(const QString& aName)
{
    return testing::Field("serviceName", &ServiceObject::serviceName, aName);
}

/// Matches a ServiceObject of this service with this object path.
inline auto IsService(const QString& aName, const QString& aPath)
{
    return testing::AllOf(IsService(aName), testing::Property("path", &ServiceObject::GetPathString, aPath));
}

// NOLINTBEGIN(readability-identifier-naming): googlemock's macro takes names as they are to be printed
/// Matches a map of variants, such as a track's information, that has this key with a value of this text.
MATCHER_P2(HasEntry, aKey, aText, "has " + QString(aKey).toStdString() + " = " + QString(aText).toStdString())
{
    const auto entry = arg.find(aKey);
    *result_listener << (entry == arg.end() ? "the key is missing" : "its value differs");
    return entry != arg.end() && QVariant(*entry).toString() == aText;
}
// NOLINTEND(readability-identifier-naming)

} // namespace MPL
