// The value types on a real connection: their signatures, what comes back, and what a strange peer may send.
#include <MPL_Types.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingReply>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

/// The same record from a peer that types the path as an object path.
struct TypedServiceObject {
    QString serviceName;
    QDBusObjectPath objectPath;
};

QDBusArgument& operator<<(QDBusArgument& aArgument, const TypedServiceObject& aObject)
{
    aArgument.beginStructure();
    aArgument << aObject.serviceName << aObject.objectPath;
    aArgument.endStructure();
    return aArgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aArgument, TypedServiceObject& aObject)
{
    aArgument.beginStructure();
    aArgument >> aObject.serviceName >> aObject.objectPath;
    aArgument.endStructure();
    return aArgument;
}

Q_DECLARE_METATYPE(TypedServiceObject)

namespace
{

/// Two ends of a connection without a bus daemon; the far end sends back what it gets.
class Echo : public QDBusVirtualObject
{
public:
    Echo()
    {
        m_Server.setAnonymousAuthenticationAllowed(true);
        QObject::connect(&m_Server, &QDBusServer::newConnection, [this](const QDBusConnection& aConnection) {
            m_FarEnd = std::make_unique<QDBusConnection>(aConnection);
            m_FarEnd->registerVirtualObject("/", this);
        });
    }

    ~Echo() override
    {
        QDBusConnection::disconnectFromPeer("near end");
        if (m_FarEnd) {
            QDBusConnection::disconnectFromPeer(m_FarEnd->name());
        }
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& aMessage, const QDBusConnection& aConnection) override
    {
        m_Signature = aMessage.signature();
        return aConnection.send(aMessage.createReply(aMessage.arguments()));
    }

    template <typename Received, typename Sent>
    Received RoundTrip(const Sent& aValue)
    {
        QDBusMessage message = QDBusMessage::createMethodCall({}, "/", "x.y", "Echo");
        message << QVariant::fromValue(aValue);
        QDBusPendingReply<Received> reply = m_NearEnd.asyncCall(message);
        QEventLoop loop;
        QDBusPendingCallWatcher watcher(reply);
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        loop.exec();
        EXPECT_TRUE(reply.isFinished() && !reply.isError()) << qPrintable(reply.error().message());
        return reply.value();
    }

    std::string Signature() const { return m_Signature.toStdString(); }

private:
    QDBusServer m_Server{"unix:tmpdir=/tmp"};
    std::unique_ptr<QDBusConnection> m_FarEnd;
    QDBusConnection m_NearEnd = QDBusConnection::connectToPeer(m_Server.address(), "near end");
    QString m_Signature;
};

class ValueTypes : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        MPL::RegisterAllMetaTypes();
        MPL::RegisterAllMetaTypes();
        qDBusRegisterMetaType<TypedServiceObject>();
    }

    Echo m_Echo;
};

TEST_F(ValueTypes, CarryAServiceObjectAsTwoStrings)
{
    const MPL::ServiceObject sent{"a.b", QDBusObjectPath("/c")};
    const auto received = m_Echo.RoundTrip<MPL::ServiceObject>(sent);
    EXPECT_EQ(m_Echo.Signature(), "(ss)");
    EXPECT_EQ(received.serviceName, "a.b");
    EXPECT_EQ(received.GetPathString(), "/c");

    const auto list = m_Echo.RoundTrip<QList<MPL::ServiceObject>>(QList<MPL::ServiceObject>{sent, {}});
    EXPECT_EQ(m_Echo.Signature(), "a(ss)");
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(1).GetPathString(), "");
}

TEST(ServiceObjectFromAStrangePeer, IsReadWithATypedPathToo)
{
    EXPECT_STREQ(QDBusMetaType::typeToSignature(qDBusRegisterMetaType<TypedServiceObject>()), "(so)");
    Echo echo;
    const auto received = echo.RoundTrip<QDBusVariant>(
        QDBusVariant(QVariant::fromValue(TypedServiceObject{"a.b", QDBusObjectPath("/c")})));
    const auto object = qdbus_cast<MPL::ServiceObject>(received.variant());
    EXPECT_EQ(object.serviceName, "a.b");
    EXPECT_EQ(object.GetPathString(), "/c");
}

TEST_F(ValueTypes, CarryATransactionId)
{
    const auto received = m_Echo.RoundTrip<MPL::TransactionId>(MPL::TransactionId(":1.7", 9));
    EXPECT_EQ(m_Echo.Signature(), "(su)");
    EXPECT_TRUE(received == MPL::TransactionId(":1.7", 9));
}

TEST_F(ValueTypes, CarryABrowserHierarchyWithItsDefaults)
{
    const QVector<MPL::BrowserHierarchy> sent{MPL::BrowserHierarchy("Artists")};
    const auto received = m_Echo.RoundTrip<QVector<MPL::BrowserHierarchy>>(sent);
    EXPECT_EQ(m_Echo.Signature(), "a(ssuu)");
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(received.at(0).name, "Artists");
    EXPECT_EQ(received.at(0).label, "");
    EXPECT_EQ(received.at(0).index, 4294967295U);
    EXPECT_EQ(received.at(0).count, 0U);
}

TEST_F(ValueTypes, CarryBufferedMediaInFullWidth)
{
    const MPL::BufferedMedia sent{-5, -9223372036854775807LL, 18446744073709551615ULL, 4294967295U, 1};
    const auto received = m_Echo.RoundTrip<MPL::BufferedMedia>(sent);
    EXPECT_EQ(m_Echo.Signature(), "(xxtuu)");
    EXPECT_EQ(received.start, sent.start);
    EXPECT_EQ(received.end, sent.end);
    EXPECT_EQ(received.total, sent.total);
    EXPECT_EQ(received.valueA, sent.valueA);
    EXPECT_EQ(received.valueB, sent.valueB);
}

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

// Reads the value as a `Value`, and checks that what comes after it is read in its place.
template <typename Value, typename Written>
Value ReadAs(Echo& aEcho, const Written& aWritten)
{
    QDBusArgument sent;
    Append(sent, Fielded(aWritten, 7U));
    const auto received = aEcho.RoundTrip<QDBusVariant>(QDBusVariant(QVariant::fromValue(sent)));
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
void ExpectDefaults(Echo& aEcho, const Written& aWritten)
{
    EXPECT_TRUE(ReadAs<MPL::TransactionId>(aEcho, aWritten).IsEmpty());
    const auto hierarchy = ReadAs<MPL::BrowserHierarchy>(aEcho, aWritten);
    EXPECT_EQ(hierarchy.name + hierarchy.label, "");
    EXPECT_EQ(hierarchy.index, 0xFFFFFFFF);
    EXPECT_EQ(hierarchy.count, 0U);
    const auto media = ReadAs<MPL::BufferedMedia>(aEcho, aWritten);
    EXPECT_EQ(std::tie(media.start, media.end, media.total, media.valueA, media.valueB),
              std::make_tuple(0, 0, 0U, 0U, 0U));
    const auto object = ReadAs<MPL::ServiceObject>(aEcho, aWritten);
    EXPECT_EQ(object.serviceName + object.GetPathString(), "");
}

TEST_F(ValueTypes, AreReadAsDefaultsFromAnyOtherSignature)
{
    const QString text = QStringLiteral("x");
    ExpectDefaults(m_Echo, text);
    ExpectDefaults(m_Echo, 5U);
    ExpectDefaults(m_Echo, 5.5);
    ExpectDefaults(m_Echo, QStringList{text, text});
    ExpectDefaults(m_Echo, QStringList());
    ExpectDefaults(m_Echo, QVariantMap{{text, 5U}});
    ExpectDefaults(m_Echo, QDBusVariant(text));
    ExpectDefaults(m_Echo, QDBusObjectPath("/x"));
    ExpectDefaults(m_Echo, Fielded(text));
    ExpectDefaults(m_Echo, Fielded(5U, text));
    ExpectDefaults(m_Echo, Fielded(text, 5));
    ExpectDefaults(m_Echo, Fielded(text, text, text));
    ExpectDefaults(m_Echo, Fielded(text, 5U, 5U));
    ExpectDefaults(m_Echo, Fielded(text, text, 5U));
    ExpectDefaults(m_Echo, Fielded(text, text, 5U, text));
    ExpectDefaults(m_Echo, Fielded(5LL, 5LL, 5LL, 5U, 5U));
    ExpectDefaults(m_Echo, Fielded(Fielded(text, 5U)));
}

TEST_F(ValueTypes, AreReadAsListsOfDefaultsFromListsOfOtherThings)
{
    const auto received = m_Echo.RoundTrip<QDBusVariant>(
        QDBusVariant(QVariant::fromValue(QList<MPL::ServiceObject>{{"a.b", {}}, {}})));
    EXPECT_EQ(qdbus_cast<QVector<MPL::BrowserHierarchy>>(received.variant()).size(), 2);
}

TEST_F(ValueTypes, CarryTheContainers)
{
    const MPL::ResultDictionary record{{"track_name", "x"}, {"track_number", 7U}};
    const auto records =
        m_Echo.RoundTrip<QList<MPL::ResultDictionary>>(QList<MPL::ResultDictionary>{record, {}});
    EXPECT_EQ(m_Echo.Signature(), "aa{sv}");
    EXPECT_EQ(records.value(0), record);
    m_Echo.RoundTrip<PresetDictionary>(PresetDictionary{{"a", "b"}});
    EXPECT_EQ(m_Echo.Signature(), "a{ss}");
    m_Echo.RoundTrip<QVector<ushort>>(QVector<ushort>{1, 65535});
    EXPECT_EQ(m_Echo.Signature(), "aq");
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
