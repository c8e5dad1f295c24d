// What googletest writes of Qt's and the stack's types, alone and inside a failure.
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestPrinters.h>

#include <QDBusMessage>
#include <QPoint>
#include <QStringList>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace
{

const MPL::ServiceObject kSource{QStringLiteral("a.b"), QDBusObjectPath(QStringLiteral("/c"))};

template <typename Value>
void ExpectPrinted(const Value& aValue, const std::string& aText)
{
    EXPECT_EQ(testing::PrintToString(aValue), aText);
}

TEST(Printers, PrintQtsTypesAsText)
{
    ExpectPrinted(QString::fromUtf8("T\xC3\xB6ne \"x\"\n"), "\"T\xC3\xB6ne \\\"x\\\"\\n\"");
    ExpectPrinted(QByteArray("a\0z", 3), R"("a\x00z")");
    ExpectPrinted(QStringList{"a", "b"}, R"({ "a", "b" })");
    ExpectPrinted(QDBusObjectPath("/c"), R"("/c")");
    ExpectPrinted(QMap<QString, QString>{{"a", "b"}}, R"({ "a": "b" })");
    ExpectPrinted(QHash<QString, int>{}, "{ }");
}

TEST(Printers, PrintVariantsWithTheirTypes)
{
    ExpectPrinted(QVariant(), "QVariant(Invalid)");
    ExpectPrinted(QVariant(5U), "QVariant(uint, 5)");
    ExpectPrinted(QVariant(true), "QVariant(bool, true)");
    ExpectPrinted(QVariant(QStringLiteral("5")), R"(QVariant(QString, "5"))");
    ExpectPrinted(QDBusVariant(1.5), "QVariant(double, 1.5)");
    ExpectPrinted(QVariant::fromValue(QList<MPL::ServiceObject>{kSource}),
                  R"(QVariant(QList<MPL::ServiceObject>, { ServiceObject("a.b", "/c") }))");
    ExpectPrinted(
        QVariantMap{{"n", 7}, {"s", QVariantMap{{"t", "x"}}}},
        R"({ "n": QVariant(int, 7), "s": QVariant(QVariantMap, { "t": QVariant(QString, "x") }) })");
    ExpectPrinted(QVariant::fromValue(QPoint(1, 2)), "QVariant(QPoint, QPoint(1,2))");
}

TEST(Printers, NameTheTypeOfAnError)
{
    const QDBusError refused(QDBusMessage::createError("com.talvex.Refused", "no \"x\""));
    ExpectPrinted(refused, R"(Other (com.talvex.Refused): "no \"x\"")");
    ExpectPrinted(QDBusError(), "NoError");
    ExpectPrinted(QDBusError::NoReply, "NoReply");
    ExpectPrinted(QDBusError(QDBusError::ServiceUnknown, "gone"),
                  R"(ServiceUnknown (org.freedesktop.DBus.Error.ServiceUnknown): "gone")");
}

TEST(Printers, PrintWhatRepliesCarry)
{
    const QDBusMessage call = QDBusMessage::createMethodCall("a.b", "/", "a.b", "Ask");
    const QDBusMessage answer = call.createReply(QVariantList{QStringLiteral("x")});
    const QDBusMessage refusal = call.createErrorReply(QDBusError::Failed, "why");
    const QDBusPendingReply<> none = QDBusPendingCall::fromCompletedCall(call.createReply());
    const QDBusPendingReply<bool> refused = QDBusPendingCall::fromCompletedCall(refusal);
    ExpectPrinted(none, "QDBusPendingReply()");
    ExpectPrinted(refused, R"(QDBusPendingReply(Failed (org.freedesktop.DBus.Error.Failed): "why"))");
    ExpectPrinted(QDBusReply<QString>(answer), R"(QDBusReply("x"))");
    ExpectPrinted(QDBusReply<void>(refusal),
                  R"(QDBusReply(Failed (org.freedesktop.DBus.Error.Failed): "why"))");
}

TEST(Printers, PrintTheStacksTypesByField)
{
    ExpectPrinted(kSource, R"(ServiceObject("a.b", "/c"))");
    ExpectPrinted(MPL::TransactionId(":1.7", 9), R"(TransactionId(":1.7", 9))");
    ExpectPrinted(MPL::BrowserHierarchy("Artists"),
                  R"(BrowserHierarchy("Artists", "", index 4294967295, count 0))");
    ExpectPrinted(MPL::BufferedMedia{-5, 6, 7, 8, 9},
                  "BufferedMedia(start -5, end 6, total 7, valueA 8, valueB 9)");
}

TEST(Printers, CompareTheStacksTypesFieldByField)
{
    EXPECT_EQ(kSource, kSource);
    EXPECT_NE(kSource, (MPL::ServiceObject{kSource.serviceName, QDBusObjectPath("/d")}));
    EXPECT_NE(kSource, (MPL::ServiceObject{"x.y", kSource.objectPath}));
    EXPECT_EQ(QList<MPL::ServiceObject>{kSource}, QList<MPL::ServiceObject>{kSource});
    MPL::BrowserHierarchy other("Artists");
    EXPECT_EQ(other, MPL::BrowserHierarchy("Artists"));
    other.count = 1;
    EXPECT_NE(other, MPL::BrowserHierarchy("Artists"));
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(kSource, MPL::ServiceObject{}), R"(Which is: ServiceObject("", ""))");
}

template <typename Parameter>
std::string NameOf(const Parameter& aParameter)
{
    return MPL::ParameterNames()(testing::TestParamInfo<Parameter>(aParameter, 0));
}

TEST(ParameterNames, SayWhatTheParameterIs)
{
    EXPECT_EQ(NameOf(QStringLiteral("media_source_disc")), "media_source_disc");
    EXPECT_EQ(NameOf(QStringLiteral("INVALID STATE")), "INVALID_STATE");
    EXPECT_EQ(NameOf(static_cast<const char*>("a.b")), "a_b");
    EXPECT_EQ(NameOf(std::make_tuple(QStringLiteral("x"), 3)), "x_3");
    EXPECT_EQ(NameOf(kSource), "ServiceObject_a_b_c");
    EXPECT_EQ(NameOf(QString()), "Empty");
}

template <typename Words>
void ExpectDifferentNames(const Words& aWords)
{
    std::set<std::string> names;
    for (const QString& word : aWords) {
        EXPECT_TRUE(names.insert(NameOf(word)).second) << testing::PrintToString(word);
    }
}

TEST(ParameterNames, TellTheStacksWordsApart)
{
    ExpectDifferentNames(MPL::MPL_REPEAT_MODES);
    ExpectDifferentNames(MPL::MPL_FUNCTIONALITIES);
    ExpectDifferentNames(MPL::MPL_BROWSER_FUNCTIONS);
    ExpectDifferentNames(MPL::MPL_RESULT_KEYS);
}

class EachRepeatMode : public testing::TestWithParam<QString>
{
};

TEST_P(EachRepeatMode, IsNamedInItsTest)
{
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    EXPECT_EQ(name, "IsNamedInItsTest/" + GetParam().toStdString());
}

INSTANTIATE_TEST_SUITE_P(Words, EachRepeatMode, testing::ValuesIn(MPL::MPL_REPEAT_MODES),
                         MPL::ParameterNames());

} // namespace
