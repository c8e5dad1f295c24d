// The signal wait, in virtual time, and the two readings of the functionalities text.
#include "DoublesTest.h"
#include <MPL_PlaybackClient.h>
#include <MPL_TestUtils.h>

#include <QSignalSpy>

using namespace MPL::Doubles;

namespace
{

class UtilitiesTest : public DoublesTest
{
};

TEST_F(UtilitiesTest, WaitForSignalPausesUntilEnoughOrTimeOut)
{
    const struct {
        const char* what;
        unsigned count;
        unsigned timeoutMs;
        int emittedBefore;
        int emittedPerPause;
        unsigned waited;
    } cases[] = {
        {"no time", 1, 0, 0, 1, 0},
        {"there already", 2, 1000, 2, 0, 0},
        {"silent", 1, 250, 0, 0, 300},
        {"whole multiple", 1, 300, 0, 0, 300},
        {"one more needed", 3, 1000, 1, 1, 200},
        {"in the last pause", 2, 150, 0, 1, 200},
        {"none needed", 0, 100, 0, 0, 0},
        {"largest count", 0xFFFFFFFF, 100, 1, 1, 100},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.what);
        ClearNotes();
        VirtualTime::Reset();
        QObject source;
        int name = 0;
        const auto emitSome = [&source, &name](int aTimes) {
            for (int i = 0; i < aTimes; ++i) {
                source.setObjectName(QString::number(++name));
            }
        };
        const QSignalSpy spy(&source, &QObject::objectNameChanged);
        emitSome(testCase.emittedBefore);
        VirtualTime::OnSleep([&] { emitSome(testCase.emittedPerPause); });
        EXPECT_EQ(MPL::TestUtils::WaitForSignal(spy, testCase.count, testCase.timeoutMs), testCase.waited);
        EXPECT_EQ(VirtualTime::Slept(), testCase.waited);
        EXPECT_EQ(Notes().size(), testCase.waited / 100) << Text(Notes());
    }
}

// "name=state:option,option" of each entry.
QString Read(const QString& aText, const QMap<QString, MPL::Functionality>& aBefore = {})
{
    QMap<QString, MPL::Functionality> map = aBefore;
    MPL::TestUtils::GetAvailableFunctionMap(aText, map);
    QStringList entries;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        EXPECT_EQ(entry.key(), entry->name);
        entries << entry->name + QLatin1Char('=') + entry->state + QLatin1Char(':') +
                       entry->options.join(QLatin1Char(','));
    }
    return entries.join(QLatin1Char(' '));
}

QString Functionalities(const QString& aMembers)
{
    return QStringLiteral("{\"available_functionalities\": %1}").arg(aMembers);
}

TEST_F(UtilitiesTest, FunctionalitiesTextIsReadWhateverItHolds)
{
    const struct {
        const char* members;
        const char* entries;
    } cases[] = {
        {R"({"SEEK": {"functionality_state": "ENABLED", "options": ["b", "a"]}, "JUMP": {}})",
         "JUMP=: SEEK=ENABLED:b,a"},
        {R"({"A": {"functionality_state": "ENABLED", "options": ["x"]}, "A": {"functionality_state": "off"}})",
         "A=off:"},
        {R"([{"functionality_state": "first"}, {"options": ["last"]}])", "=:last"},
        {R"({"A": {"FUNCTIONALITY_state": "s", "OPTIONS": ["o"], "other": {"options": ["no"]}}})", "A=s:o"},
        {R"({"A": {"functionality_state": 5, "options": ["o", null, 7, ["x", []], {"y": 1}, "p"]}})",
         "A=:o,,,,,p"},
        {R"({"A": {"functionality_state": null, "options": "o"}, "B": "text", "C": null, "D": [1, [2]]})",
         "A=: B=: C=: D=:"},
        {"\"text\"", ""},
        {"5", ""},
        {"null", ""},
        {"{}", ""},
        {R"({"A": )", ""},
        {"{\"\xC3\xA4\xE2\x82\xAC\": {\"functionality_state\": \"\xEF\xBB\xBFx\\n\"}}",
         "\xC3\xA4\xE2\x82\xAC=\xEF\xBB\xBFx\n:"},
    };
    for (const auto& testCase : cases) {
        // QString::fromUtf8() would take a byte-order mark away only at the very beginning.
        EXPECT_EQ(Read(Functionalities(QString::fromUtf8(testCase.members))).toStdString(),
                  QString::fromUtf8(testCase.entries).toStdString())
            << testCase.members;
    }
    const QMap<QString, MPL::Functionality> before{
        {QStringLiteral("A"), {QStringLiteral("A"), QStringLiteral("old"), {QStringLiteral("o")}}},
        {QStringLiteral("Z"), {QStringLiteral("Z"), QStringLiteral("kept"), {}}}};
    EXPECT_EQ(Read(Functionalities(QStringLiteral(R"({"A": {"functionality_state": "new"}})")), before),
              QStringLiteral("A=new: Z=kept:"));
    for (const QString& text :
         {QString(), QStringLiteral("{}"), QStringLiteral("[]"), QStringLiteral("nonsense"),
          QStringLiteral("{\"Available\": {\"A\": {}}}"), Functionalities(QString(10000, QLatin1Char('['))),
          Functionalities(QString(10000, QLatin1Char('[')) + QString(10000, QLatin1Char(']')))}) {
        EXPECT_EQ(Read(text, before), QStringLiteral("A=old:o Z=kept:")) << qPrintable(text.left(60));
    }
}

TEST_F(UtilitiesTest, LargeAndInvalidFunctionalitiesTextsAreSurvived)
{
    QStringList options;
    for (int i = 0; i < 100000; ++i) {
        options << QStringLiteral("\"option %1\"").arg(i);
    }
    const QString large =
        Functionalities(QStringLiteral("{\"A\": {\"options\": [%1]}}").arg(options.join(QLatin1Char(','))));
    ASSERT_GT(large.size(), 1000000);
    EXPECT_TRUE(Read(large).endsWith(QStringLiteral(",option 99999")));

    const QString loneSurrogate = QString(QChar(0xD800));
    EXPECT_TRUE(Read(Functionalities(QStringLiteral("{\"A%1\": {\"options\": [\"%1\"]}}").arg(loneSurrogate)))
                    .startsWith(QLatin1Char('A')));
}

TEST_F(UtilitiesTest, PlaybackClientReadsTheSameTextWithEnabledOnlyForTheExactWord)
{
    QMap<QString, MPL::PlaybackClient::Functionality> map{
        {QStringLiteral("Z"), {QStringLiteral("Z"), true, {}}}};
    MPL::PlaybackClient::GetAvailableFunctionMap(
        Functionalities(QStringLiteral(
            R"({"A": {"functionality_state": "ENABLED", "options": ["o", "p"]},)"
            R"("B": {"functionality_state": "enabled"}, "C": {"functionality_state": "DISABLED"},)"
            R"("D": {}, "E": {"functionality_state": ["ENABLED"]},)"
            "\"F\": {\"functionality_state\": \"\uFEFFENABLED\"}}")),
        map);
    QString enabled;
    for (const MPL::PlaybackClient::Functionality& entry : qAsConst(map)) {
        enabled += entry.name + (entry.enabled ? QLatin1Char('+') : QLatin1Char('-'));
    }
    EXPECT_EQ(enabled, QStringLiteral("A+B-C-D-E-F-Z+"));
    EXPECT_EQ(map.value(QStringLiteral("A")).options,
              QStringList({QStringLiteral("o"), QStringLiteral("p")}));
}

} // namespace
