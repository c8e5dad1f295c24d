// Every proxy has exactly the members of its interface, each with its signatures.
#include "Interfaces.h"
#include "MethodSignature.h"
#include <MPL_Proxies.h>
#include <MPL_Types.h>

#include <gtest/gtest.h>

namespace
{

using namespace MPL::Doubles;

std::string Sorted(QStringList aWords)
{
    aWords.removeAll(QString());
    aWords.sort();
    return aWords.join('\n').toStdString();
}

QString Call(const QMetaMethod& aMethod)
{
    return QString::fromLatin1(aMethod.name()) + '(' + SignatureOfArguments(aMethod) + ')';
}

// The reply's signature, read off the type's name: "QDBusPendingReply<T>".
QString Reply(const QMetaMethod& aMethod)
{
    QByteArray type = aMethod.typeName();
    const QByteArray prefix("QDBusPendingReply<");
    if (!type.startsWith(prefix) || !type.endsWith('>')) {
        return "no pending reply: " + QLatin1String(type);
    }
    type = type.mid(prefix.size(), type.size() - prefix.size() - 1).trimmed();
    return type.isEmpty() ? QString() : SignatureOfType(QMetaType::type(type));
}

std::string OwnMembers(const QObject& aProxy, QMetaMethod::MethodType aType)
{
    QStringList members;
    const QMetaObject* meta = aProxy.metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == aType) {
            members << Call(method) + (aType == QMetaMethod::Slot ? "->" + Reply(method) : QString());
        }
    }
    return Sorted(members);
}

class AProxy : public testing::TestWithParam<Interface>
{
protected:
    static void SetUpTestSuite()
    {
        MPL::RegisterAllMetaTypes();
        // How the replies write a dictionary.
        qRegisterMetaType<QVariantMap>("QMap<QString,QVariant>");
    }
};

TEST_P(AProxy, HasExactlyTheMembersOfItsInterface)
{
    const auto proxy = GetParam().make(QDBusConnection(QString()));
    EXPECT_EQ(proxy->interface(), QString("com.talvex.DBus.MediaPlayer.") + GetParam().name);
    EXPECT_EQ(OwnMembers(*proxy, QMetaMethod::Slot), Sorted(QString(GetParam().methods).split(' ')));
    EXPECT_EQ(OwnMembers(*proxy, QMetaMethod::Signal), Sorted(QString(GetParam().signalMembers).split(' ')));
}

INSTANTIATE_TEST_SUITE_P(Of, AProxy, testing::ValuesIn(kInterfaces),
                         [](const auto& aInfo) { return std::string(aInfo.param.name); });

} // namespace
