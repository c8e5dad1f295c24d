#include "ParameterText.h"
#include <MPL_Parameters.h>

#include <gtest/gtest.h>

namespace
{

using Map = QMap<QString, QString>;

Map Read(const QString& aText)
{
    Map map;
    MPL::GetParameters(aText, map);
    return map;
}

TEST(Parameters, ComeBackUnchangedWhateverTheyHold)
{
    const QString odd = QChar(0xfeff) + "a=b;c%3D%;+ &#?\n\t\"'<>{}\\|^` ä€😀/:" + QChar(0) + QChar(0xffff);
    const QString text = MPL::Detail::MakeParameters({{"text_info", odd}, {odd, "x"}, {"empty", QString()}});
    EXPECT_EQ(Read(text), (Map{{"text_info", odd}, {odd, "x"}, {"empty", QString()}}));
}

TEST(Parameters, AreReadFromTextsOfOthers)
{
    const Map read = Read("event_type=ERROR;;just words;text=5 % of a=b & c+d;x=%zz%2;x=2;=v;o=/a/b");
    EXPECT_EQ(read, (Map{{"event_type", "ERROR"}, {"text", "5 % of a=b & c+d"}, {"x", "2"}, {"o", "/a/b"}}));
}

TEST(Parameters, AreLeftAloneByATextWithoutAPair)
{
    for (const char* text : {"", ";", "words", "=", "=value", "%3D"}) {
        Map map{{"kept", "1"}};
        EXPECT_FALSE(MPL::GetParameters(QLatin1String(text), map)) << text;
        EXPECT_EQ(map.size(), 1) << text;
    }
    Map map{{"kept", "1"}};
    EXPECT_TRUE(MPL::GetParameters("more=", map));
    EXPECT_EQ(map.size(), 2);
}

} // namespace
