// The signal wait, in virtual time, and the two readings of the functionalities text.
#include "DoublesTest.h"
#include <MPL_PlaybackClient.h>
#include <MPL_TestUtils.h>

#include <QSignalSpy>

using namespace MPL::Doubles;

namespace
{

using TestUtilities = DoublesTest;

const struct {
    const char* what;
    unsigned count;
    unsigned timeoutMs;
    int emittedBefore;
    int emittedPerPause;
    unsigned waited;
} kWaits[] = {
    {"no time", 1, 0, 0, 1, 0},
    {"there already", 2, 1000, 2, 0, 0},
    {"silent", 1, 250, 0, 0, 300},
    {"whole multiple", 1, 300, 0, 0, 300},
    {"one more needed", 3, 1000, 1, 1, 200},
    {"in the last pause", 2, 150, 0, 1, 200},
    {"none needed", 0, 100, 0, 0, 0},
    {"largest count", 0xFFFFFFFF, 100, 1, 1, 100},
};

TEST_F(TestUtilities, PauseUntilThereAreEnoughSignalsOrTheTimeIsOut)
{
    for (const auto& testCase : kWaits) {
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
        entries << entry->name + '=' + entry->state + ':' + entry->options.join(',');
    }
    return entries.join(' ');
}

QString Functionalities(const QString& aMembers)
{
    return QStringLiteral("{\"available_functionalities\": %1}").arg(aMembers);
}

const struct {
    const char* members;
    const char* entries;
} kTexts[] = {
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

TEST_F(TestUtilities, ReadAFunctionalitiesTextWhateverItHolds)
{
    for (const auto& testCase : kTexts) {
        // QString::fromUtf8() would take a byte-order mark away only at the very beginning.
        EXPECT_EQ(Read(Functionalities(QString::fromUtf8(testCase.members))).toStdString(),
                  QString::fromUtf8(testCase.entries).toStdString())
            << testCase.members;
    }
}

TEST_F(TestUtilities, KeepFunctionalitiesThatTheTextDoesNotReplace)
{
    const QMap<QString, MPL::Functionality> before{{"A", {"A", "old", {"o"}}}, {"Z", {"Z", "kept", {}}}};
    EXPECT_EQ(Read(Functionalities(R"({"A": {"functionality_state": "new"}})"), before), "A=new: Z=kept:");
    for (const QString& text : QStringList{QString(), "{}", "[]", "nonsense", R"({"Available": {"A": {}}})",
                                           Functionalities(QString(10000, '[')),
                                           Functionalities(QString(10000, '[') + QString(10000, ']'))}) {
        EXPECT_EQ(Read(text, before), "A=old:o Z=kept:") << qPrintable(text.left(60));
    }
}

TEST_F(TestUtilities, SurviveLargeAndInvalidFunctionalitiesTexts)
{
    QStringList options;
    for (int i = 0; i < 100000; ++i) {
        options << QStringLiteral("\"option %1\"").arg(i);
    }
    const QString large =
        Functionalities(QStringLiteral("{\"A\": {\"options\": [%1]}}").arg(options.join(',')));
    ASSERT_GT(large.size(), 1000000);
    EXPECT_TRUE(Read(large).endsWith(",option 99999"));

    const QString loneSurrogate = QString(QChar(0xD800));
    EXPECT_TRUE(Read(Functionalities(QStringLiteral("{\"A%1\": {\"options\": [\"%1\"]}}").arg(loneSurrogate)))
                    .startsWith('A'));
}

TEST_F(TestUtilities, ReadTheSameTextForThePlaybackClientWithEnabledOnlyForTheExactWord)
{
    QMap<QString, MPL::PlaybackClient::Functionality> map{{"Z", {"Z", true, {}}}};
    MPL::PlaybackClient::GetAvailableFunctionMap(
        Functionalities(
            R"({"A": {"functionality_state": "ENABLED", "options": ["o", "p"]},)"
            R"("B": {"functionality_state": "enabled"}, "C": {"functionality_state": "DISABLED"},)"
            R"("D": {}, "E": {"functionality_state": ["ENABLED"]},)"
            "\"F\": {\"functionality_state\": \"\uFEFFENABLED\"}}"),
        map);
    QString enabled;
    for (const MPL::PlaybackClient::Functionality& entry : qAsConst(map)) {
        enabled += entry.name + (entry.enabled ? '+' : '-');
    }
    EXPECT_EQ(enabled, "A+B-C-D-E-F-Z+");
    EXPECT_EQ(map.value("A").options, QStringList({"o", "p"}));
}

} // namespace
