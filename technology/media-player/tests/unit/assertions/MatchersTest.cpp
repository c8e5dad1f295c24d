#include <MPL_TestMatchers.h>

#include <gtest/gtest.h>

#include <string>

namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const MPL::ServiceObject kDisc{"a.disc", QDBusObjectPath("/disc")};
const MPL::ServiceObject kRadio{"a.radio", QDBusObjectPath("/radio")};

template <typename Matcher, typename Value>
std::string Explanation(const Matcher& aMatcher, const Value& aValue)
{
    testing::StringMatchResultListener listener;
    testing::SafeMatcherCast<const Value&>(aMatcher).MatchAndExplain(aValue, &listener);
    return listener.str();
}

TEST(Matchers, KnowServicesInLists)
{
    const QList<MPL::ServiceObject> sources{kDisc, kRadio};
    EXPECT_THAT(sources, Contains(MPL::IsService("a.radio")));
    EXPECT_THAT(sources, Contains(MPL::IsService("a.radio", "/radio")));
    EXPECT_THAT(sources, Not(Contains(MPL::IsService("a.radio", "/disc"))));
    EXPECT_THAT(sources, ElementsAre(kDisc, kRadio));
    EXPECT_THAT(Explanation(MPL::IsService("a.radio"), kDisc), HasSubstr(R"("a.disc")"));
}

TEST(Matchers, ReadTexts)
{
    EXPECT_THAT(QString("Flöd"), MPL::AsText(HasSubstr("lö")));
    EXPECT_THAT(QString("Flöd"), Not(MPL::AsText(HasSubstr("x"))));
}

TEST(Matchers, FindEntriesOfMaps)
{
    const QVariantMap track{{"name", "Ebb"}, {"length", 10000U}};
    EXPECT_THAT(track, MPL::HasEntry("name", "Ebb"));
    EXPECT_THAT(track, MPL::HasEntry("length", "10000"));
    EXPECT_THAT(track, Not(MPL::HasEntry("name", "Neap")));
    EXPECT_EQ(Explanation(MPL::HasEntry("name", "Neap"), track), "its value differs");
    EXPECT_EQ(Explanation(MPL::HasEntry("artist", ""), track), "the key is missing");
}

} // namespace
