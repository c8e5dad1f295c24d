// The value types on a real connection: their signatures, what comes back, and what a strange peer may send.
#include "FakeService.h"
#include "PrivateBus.h"
#include <MPL_Types.h>

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingReply>

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

namespace
{

using namespace MPL::Doubles;

const QString kService = "com.talvex.Test.Echo";

template <typename Written>
void Append(QDBusArgument& aArgument, const Written& aValue)
{
    aArgument << aValue;
}

// A structure of the given fields.
template <typename... Fields>
struct Structure {
    std::tuple<Fields...> fields;
};

template <typename... Fields>
void Append(QDBusArgument& aArgument, const Structure<Fields...>& aStructure)
{
    aArgument.beginStructure();
    std::apply([&aArgument](const auto&... aField) { (Append(aArgument, aField), ...); }, aStructure.fields);
    aArgument.endStructure();
}

template <typename... Fields>
Structure<Fields...> Fielded(const Fields&... aFields)
{
    return {{aFields...}};
}

auto Fields(const MPL::BufferedMedia& aMedia)
{
    return std::make_tuple(aMedia.start, aMedia.end, aMedia.total, aMedia.valueA, aMedia.valueB);
}

class ValueTypes : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        MPL::RegisterAllMetaTypes();
        MPL::RegisterAllMetaTypes();
    }

    ~ValueTypes() override { QDBusConnection::disconnectFromBus("near end"); }

    // Sends a value to a service that sends back what it gets.
    template <typename Received, typename Sent>
    Received RoundTrip(const Sent& aValue)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(kService, "/", "x.y", "Echo");
        message << QVariant::fromValue(aValue);
        QDBusPendingReply<Received> reply = m_NearEnd.asyncCall(message);
        reply.waitForFinished();
        EXPECT_FALSE(reply.isError()) << qPrintable(reply.error().message());
        m_Signature = reply.reply().signature().toStdString();
        return reply.value();
    }

    // Reads the value as a `Value`, and checks that what comes after it is read in its place.
    template <typename Value, typename Written>
    Value ReadAs(const Written& aWritten)
    {
        QDBusArgument sent;
        Append(sent, Fielded(aWritten, 7U));
        const auto received = RoundTrip<QDBusVariant>(QDBusVariant(QVariant::fromValue(sent)));
        const auto argument = received.variant().value<QDBusArgument>();
        Value value;
        uint next = 0;
        argument.beginStructure();
        argument >> value >> next;
        argument.endStructure();
        EXPECT_EQ(next, 7U) << qPrintable(sent.currentSignature());
        return value;
    }

    template <typename Written>
    void ExpectDefaults(const Written& aWritten)
    {
        EXPECT_TRUE(ReadAs<MPL::TransactionId>(aWritten).IsEmpty());
        const auto hierarchy = ReadAs<MPL::BrowserHierarchy>(aWritten);
        EXPECT_EQ(hierarchy.name + hierarchy.label, "");
        EXPECT_EQ(hierarchy.index, 0xFFFFFFFF);
        EXPECT_EQ(hierarchy.count, 0U);
        EXPECT_EQ(Fields(ReadAs<MPL::BufferedMedia>(aWritten)), Fields(MPL::BufferedMedia{}));
        const auto object = ReadAs<MPL::ServiceObject>(aWritten);
        EXPECT_EQ(object.serviceName + object.GetPathString(), "");
    }

    FakeService m_FarEnd{SharedBus().Address(), kService,
                         [](const QDBusMessage& aCall, QDBusConnection& aConnection) {
                             aConnection.send(aCall.createReply(aCall.arguments()));
                         }};
    QDBusConnection m_NearEnd = QDBusConnection::connectToBus(SharedBus().Address(), "near end");
    std::string m_Signature; // of what came back last
};

TEST_F(ValueTypes, CarryAServiceObjectAsTwoStrings)
{
    const MPL::ServiceObject sent{"a.b", QDBusObjectPath("/c")};
    const auto received = RoundTrip<MPL::ServiceObject>(sent);
    EXPECT_EQ(m_Signature, "(ss)");
    EXPECT_EQ(received.serviceName, "a.b");
    EXPECT_EQ(received.GetPathString(), "/c");

    const auto list = RoundTrip<QList<MPL::ServiceObject>>(QList<MPL::ServiceObject>{sent, {}});
    EXPECT_EQ(m_Signature, "a(ss)");
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(1).GetPathString(), "");
}

TEST_F(ValueTypes, ReadAServiceObjectWithATypedPathToo)
{
    const auto object = ReadAs<MPL::ServiceObject>(Fielded(QString("a.b"), QDBusObjectPath("/c")));
    EXPECT_EQ(object.serviceName, "a.b");
    EXPECT_EQ(object.GetPathString(), "/c");
}

TEST_F(ValueTypes, CarryATransactionId)
{
    const auto received = RoundTrip<MPL::TransactionId>(MPL::TransactionId(":1.7", 9));
    EXPECT_EQ(m_Signature, "(su)");
    EXPECT_TRUE(received == MPL::TransactionId(":1.7", 9));
}

TEST_F(ValueTypes, CarryABrowserHierarchyWithItsDefaults)
{
    const QVector<MPL::BrowserHierarchy> sent{MPL::BrowserHierarchy("Artists")};
    const auto received = RoundTrip<QVector<MPL::BrowserHierarchy>>(sent);
    EXPECT_EQ(m_Signature, "a(ssuu)");
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(received.at(0).name, "Artists");
    EXPECT_EQ(received.at(0).label, "");
    EXPECT_EQ(received.at(0).index, 4294967295U);
    EXPECT_EQ(received.at(0).count, 0U);
}

TEST_F(ValueTypes, CarryBufferedMediaInFullWidth)
{
    const MPL::BufferedMedia sent{-5, -9223372036854775807LL, 18446744073709551615ULL, 4294967295U, 1};
    const auto received = RoundTrip<MPL::BufferedMedia>(sent);
    EXPECT_EQ(m_Signature, "(xxtuu)");
    EXPECT_EQ(Fields(received), Fields(sent));
}

TEST_F(ValueTypes, AreReadAsDefaultsFromAnyOtherSignature)
{
    const QString text = "x";
    ExpectDefaults(text);
    ExpectDefaults(5U);
    ExpectDefaults(5.5);
    ExpectDefaults(QStringList{text, text});
    ExpectDefaults(QStringList());
    ExpectDefaults(QVariantMap{{text, 5U}});
    ExpectDefaults(QDBusVariant(text));
    ExpectDefaults(QDBusObjectPath("/x"));
    ExpectDefaults(Fielded(text));
    ExpectDefaults(Fielded(5U, text));
    ExpectDefaults(Fielded(text, 5));
    ExpectDefaults(Fielded(text, text, text));
    ExpectDefaults(Fielded(text, 5U, 5U));
    ExpectDefaults(Fielded(text, text, 5U));
    ExpectDefaults(Fielded(text, text, 5U, text));
    ExpectDefaults(Fielded(5LL, 5LL, 5LL, 5U, 5U));
    ExpectDefaults(Fielded(Fielded(text, 5U)));
}

TEST_F(ValueTypes, AreReadAsListsOfDefaultsFromListsOfOtherThings)
{
    const auto received = RoundTrip<QDBusVariant>(
        QDBusVariant(QVariant::fromValue(QList<MPL::ServiceObject>{{"a.b", {}}, {}})));
    EXPECT_EQ(qdbus_cast<QVector<MPL::BrowserHierarchy>>(received.variant()).size(), 2);
}

TEST_F(ValueTypes, CarryTheContainers)
{
    const MPL::ResultDictionary record{{"track_name", "x"}, {"track_number", 7U}};
    const auto records = RoundTrip<QList<MPL::ResultDictionary>>(QList<MPL::ResultDictionary>{record, {}});
    EXPECT_EQ(m_Signature, "aa{sv}");
    EXPECT_EQ(records.value(0), record);
    RoundTrip<PresetDictionary>(PresetDictionary{{"a", "b"}});
    EXPECT_EQ(m_Signature, "a{ss}");
    RoundTrip<QVector<ushort>>(QVector<ushort>{1, 65535});
    EXPECT_EQ(m_Signature, "aq");
}

TEST_F(ValueTypes, AreKnownByTheNamesThatSignalsWrite)
{
    const std::pair<const char*, int> names[] = {
        {"ServiceObject", qMetaTypeId<MPL::ServiceObject>()},
        {"QList<ServiceObject>", qMetaTypeId<QList<MPL::ServiceObject>>()},
        {"BrowserHierarchy", qMetaTypeId<MPL::BrowserHierarchy>()},
        {"QVector<BrowserHierarchy>", qMetaTypeId<QVector<MPL::BrowserHierarchy>>()},
        {"TransactionId", qMetaTypeId<MPL::TransactionId>()},
        {"BufferedMedia", qMetaTypeId<MPL::BufferedMedia>()},
        {"DeviceInfo", qMetaTypeId<CinemoUtils::DeviceInfo>()},
        {"MPL::ResultDictionary", qMetaTypeId<QVariantMap>()},
        {"QList<MPL::ResultDictionary>", qMetaTypeId<QList<QVariantMap>>()},
        {"QList<PresetDictionary>", qMetaTypeId<QList<QMap<QString, QString>>>()},
        {"PresetDictionary", qMetaTypeId<QMap<QString, QString>>()},
        {"SourceInfo", qMetaTypeId<QMap<QString, QString>>()},
        {"MediaSourceState", qMetaTypeId<QMap<QString, QString>>()},
        {"intList", qMetaTypeId<QList<uint>>()},
        {"SeekMode", QMetaType::QString},
        {"RepeatMode", QMetaType::QString},
        {"ShuffleMode", QMetaType::QString},
    };
    for (const auto& [name, id] : names) {
        EXPECT_EQ(QMetaType::type(name), id) << name;
    }
    EXPECT_NE(QMetaType::type("QGenericArgument"), QMetaType::UnknownType);
}

TEST(TransactionIds, AreEmptyOnlyWithBothDefaults)
{
    EXPECT_TRUE(MPL::TransactionId().IsEmpty());
    EXPECT_TRUE(MPL::TransactionId("", 0xFFFFFFFF).IsEmpty());
    EXPECT_FALSE(MPL::TransactionId("", 0).IsEmpty());
    EXPECT_FALSE(MPL::TransactionId(":1.7", 0xFFFFFFFF).IsEmpty());
    EXPECT_FALSE(MPL::TransactionId(":1.7", 1) == MPL::TransactionId(":1.8", 1));
    EXPECT_FALSE(MPL::TransactionId(":1.7", 1) == MPL::TransactionId(":1.7", 2));
}

TEST(TransactionIds, AreCountedFromOne)
{
    MPL::TransactionIdCreator creator(":1.7");
    for (uint counter = 1; counter <= 3; ++counter) {
        EXPECT_TRUE(creator.Create() == MPL::TransactionId(":1.7", counter));
    }
}

TEST(ServiceObjects, PrintBothNamesQuoted)
{
    QString text;
    QDebug(&text) << MPL::ServiceObject{"a.b", QDBusObjectPath("/c")} << 1;
    EXPECT_EQ(text, R"("a.b" <> "/c" 1 )");
}

} // namespace
