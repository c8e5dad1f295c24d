// Every proxy has exactly the members of its interface, each call leaves with its signature, and each signal
// of the service arrives.
#include "Interfaces.h"
#include <MPL_Proxies.h>
#include <MPL_Types.h>

#include <QCoreApplication>
#include <QDBusMetaType>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace
{

QStringList Words(const char* aText)
{
    QStringList words = QString::fromLatin1(aText).split(QLatin1Char(' '));
    words.removeAll(QString());
    words.sort();
    return words;
}

QString Call(const QMetaMethod& aMethod)
{
    QString signature;
    for (int i = 0; i < aMethod.parameterCount(); ++i) {
        signature += QLatin1String(QDBusMetaType::typeToSignature(aMethod.parameterType(i)));
    }
    return QString::fromLatin1(aMethod.name()) + QLatin1Char('(') + signature + QLatin1Char(')');
}

// The reply's signature, read off the type's name: "QDBusPendingReply<T>".
QString Reply(const QMetaMethod& aMethod)
{
    QByteArray type = aMethod.typeName();
    const QByteArray prefix("QDBusPendingReply<");
    if (!type.startsWith(prefix) || !type.endsWith('>')) {
        return QStringLiteral("no pending reply: ") + QLatin1String(type);
    }
    type = type.mid(prefix.size(), type.size() - prefix.size() - 1).trimmed();
    return type.isEmpty() ? QString() : QLatin1String(QDBusMetaType::typeToSignature(QMetaType::type(type)));
}

std::vector<QMetaMethod> OwnMembers(const QObject& aProxy, QMetaMethod::MethodType aType)
{
    std::vector<QMetaMethod> members;
    const QMetaObject* meta = aProxy.metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == aType) {
            members.push_back(meta->method(i));
        }
    }
    return members;
}

// Default values of the parameters of a member.
class Arguments
{
public:
    explicit Arguments(const QMetaMethod& aMember)
    {
        for (int i = 0; i < aMember.parameterCount(); ++i) {
            m_Values.append(QVariant(aMember.parameterType(i), nullptr));
        }
    }
    const QVariantList& Values() const { return m_Values; }
    QGenericArgument At(int aIndex) const
    {
        return aIndex < m_Values.size()
                   ? QGenericArgument(m_Values.at(aIndex).typeName(), m_Values.at(aIndex).constData())
                   : QGenericArgument();
    }

private:
    QVariantList m_Values;
};

// Stands at the other end of the line, hears every call and answers none.
class Listener : public QDBusVirtualObject
{
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& aMessage, const QDBusConnection&) override
    {
        calls.push_back(aMessage);
        aMessage.setDelayedReply(true);
        return true;
    }
    std::vector<QDBusMessage> calls;
};

class AProxy : public testing::TestWithParam<Interface>
{
protected:
    static void SetUpTestSuite()
    {
        MPL::RegisterAllMetaTypes();
        // How the replies write a dictionary.
        qRegisterMetaType<QVariantMap>("QMap<QString,QVariant>");
    }

    AProxy() : m_Server(QStringLiteral("unix:path=%1/bus").arg(m_Folder.path()))
    {
        QObject::connect(&m_Server, &QDBusServer::newConnection, [this](QDBusConnection aConnection) {
            aConnection.registerVirtualObject(QStringLiteral("/"), &m_Listener, QDBusConnection::SubPath);
            m_Far = std::make_unique<QDBusConnection>(aConnection);
        });
        m_Near = QDBusConnection::connectToPeer(m_Server.address(), QStringLiteral("near"));
        EXPECT_TRUE(Wait([this] { return m_Far != nullptr; }));
    }
    ~AProxy() override { QDBusConnection::disconnectFromPeer(QStringLiteral("near")); }

    static bool Wait(const std::function<bool()>& aCondition)
    {
        QElapsedTimer time;
        for (time.start(); !aCondition() && time.elapsed() < 5000;) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return aCondition();
    }

    QTemporaryDir m_Folder;
    Listener m_Listener;
    QDBusServer m_Server;
    std::unique_ptr<QDBusConnection> m_Far;
    QDBusConnection m_Near{QString()};
};

TEST_P(AProxy, HasExactlyTheMembersOfItsInterface)
{
    const auto proxy = GetParam().make(m_Near);
    EXPECT_EQ("com.talvex.DBus.MediaPlayer." + std::string(GetParam().name),
              proxy->interface().toStdString());

    QStringList methods;
    for (const QMetaMethod& method : OwnMembers(*proxy, QMetaMethod::Slot)) {
        methods.append(Call(method) + QStringLiteral("->") + Reply(method));
    }
    methods.sort();
    EXPECT_EQ(Words(GetParam().methods), methods)
        << "found: " << methods.join(QLatin1Char(' ')).toStdString();

    QStringList signalMembers;
    for (const QMetaMethod& signal : OwnMembers(*proxy, QMetaMethod::Signal)) {
        signalMembers.append(Call(signal));
    }
    signalMembers.sort();
    EXPECT_EQ(Words(GetParam().signalMembers), signalMembers)
        << "found: " << signalMembers.join(QLatin1Char(' ')).toStdString();
}

TEST_P(AProxy, SendsEachCallWithItsSignature)
{
    const auto proxy = GetParam().make(m_Near);
    const auto methods = OwnMembers(*proxy, QMetaMethod::Slot);
    for (const QMetaMethod& method : methods) {
        const Arguments arguments(method);
        ASSERT_TRUE(method.invoke(proxy.get(), Qt::DirectConnection, arguments.At(0), arguments.At(1),
                                  arguments.At(2), arguments.At(3), arguments.At(4)));
    }
    ASSERT_TRUE(Wait([&] { return m_Listener.calls.size() >= methods.size(); }))
        << m_Listener.calls.size() << " of " << methods.size() << " calls arrived";

    QStringList received;
    for (const QDBusMessage& call : m_Listener.calls) {
        EXPECT_EQ(call.interface(), proxy->interface());
        EXPECT_EQ(call.path(), proxy->path());
        received.append(call.member() + QLatin1Char('(') + call.signature() + QLatin1Char(')'));
    }
    received.sort();
    QStringList expected = Words(GetParam().methods);
    expected.replaceInStrings(QRegExp(QStringLiteral("->.*")), QString());
    EXPECT_EQ(received, expected) << "received: " << received.join(QLatin1Char(' ')).toStdString();
}

TEST_P(AProxy, ForwardsEachSignalOfTheService)
{
    const auto proxy = GetParam().make(m_Near);
    for (const QMetaMethod& member : OwnMembers(*proxy, QMetaMethod::Signal)) {
        const QByteArray name = QByteArray::number(QSIGNAL_CODE) + member.methodSignature();
        QSignalSpy spy(proxy.get(), name.constData());
        QDBusMessage signal =
            QDBusMessage::createSignal(proxy->path(), proxy->interface(), QString::fromLatin1(member.name()));
        signal.setArguments(Arguments(member).Values());
        ASSERT_TRUE(m_Far->send(signal));
        EXPECT_TRUE(Wait([&] { return spy.count() == 1; })) << member.methodSignature().constData();
    }
}

INSTANTIATE_TEST_SUITE_P(Of, AProxy, testing::ValuesIn(Interfaces()),
                         [](const auto& aInfo) { return std::string(aInfo.param.name); });

// Values at the edge of their types, which a wrong width or sign would change on the way.
class ProxyArguments : public AProxy
{
};

TEST_P(ProxyArguments, ArriveUnchanged)
{
    ComTalvexDBusMediaPlayerPlaybackControlInterface control({}, QStringLiteral("/object"), m_Near);
    ComTalvexDBusMediaPlayerBrowserInterface browser({}, QStringLiteral("/object"), m_Near);
    control.Jump(-2147483647);
    control.SeekToTime(4294967295U);
    browser.SelectRecordById(18446744073709551615ULL);
    browser.RequestRecordsByTransactionId(MPL::TransactionId(QStringLiteral(":1.7"), 4294967295U), 1, 2);
    ASSERT_TRUE(Wait([this] { return m_Listener.calls.size() >= 4; }));
    EXPECT_EQ(m_Listener.calls[0].arguments().value(0).toInt(), -2147483647);
    EXPECT_EQ(m_Listener.calls[1].arguments().value(0).toUInt(), 4294967295U);
    EXPECT_EQ(m_Listener.calls[2].arguments().value(0).toULongLong(), 18446744073709551615ULL);
    const QVariantList records = m_Listener.calls[3].arguments();
    EXPECT_TRUE(MPL::TransactionId(QStringLiteral(":1.7"), 4294967295U) ==
                qdbus_cast<MPL::TransactionId>(records.value(0)));
    EXPECT_EQ(records.mid(1), (QVariantList{1U, 2U}));
}

INSTANTIATE_TEST_SUITE_P(OfBrowserAndPlayback, ProxyArguments, testing::Values(Interfaces().back()),
                         [](const auto&) { return std::string("AtTheEdge"); });

} // namespace
