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
    const QString odd = QStringLiteral("a=b;c%3D%;+ &#?\n\t\"'<>{}\\|^` ä€😀/:") + QChar(0) + QChar(0xfffd);
    const QString text = MPL::Detail::MakeParameters({{QStringLiteral("text_info"), odd},
                                                      {odd, QStringLiteral("x")},
                                                      {QStringLiteral("empty"), QString()}});
    EXPECT_EQ(Read(text), (Map{{QStringLiteral("text_info"), odd},
                               {odd, QStringLiteral("x")},
                               {QStringLiteral("empty"), QString()}}));
}

TEST(Parameters, AreReadFromTextsOfOthers)
{
    const Map read =
        Read(QStringLiteral("event_type=ERROR;;just words;text=5 % of a=b & c+d;x=%zz%2;x=2;=v;o=/a/b"));
    EXPECT_EQ(read, (Map{{QStringLiteral("event_type"), QStringLiteral("ERROR")},
                         {QStringLiteral("text"), QStringLiteral("5 % of a=b & c+d")},
                         {QStringLiteral("x"), QStringLiteral("2")},
                         {QStringLiteral("o"), QStringLiteral("/a/b")}}));
}

TEST(Parameters, AreLeftAloneByATextWithoutAPair)
{
    for (const char* text : {"", ";", "words", "=", "=value", "%3D"}) {
        Map map{{QStringLiteral("kept"), QStringLiteral("1")}};
        EXPECT_FALSE(MPL::GetParameters(QLatin1String(text), map)) << text;
        EXPECT_EQ(map.size(), 1) << text;
    }
    Map map{{QStringLiteral("kept"), QStringLiteral("1")}};
    EXPECT_TRUE(MPL::GetParameters(QStringLiteral("more="), map));
    EXPECT_EQ(map.size(), 2);
}

} // namespace
