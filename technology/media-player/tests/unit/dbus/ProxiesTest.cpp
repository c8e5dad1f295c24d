// Every proxy has exactly the members of its interface, each with its signatures.
#include "Interfaces.h"
#include <MPL_Proxies.h>
#include <MPL_Types.h>

#include <QDBusMetaType>
#include <QMetaMethod>

#include <gtest/gtest.h>

namespace
{

std::string Sorted(QStringList aWords)
{
    aWords.removeAll(QString());
    aWords.sort();
    return aWords.join('\n').toStdString();
}

// Qt 5 knows a type by its number, Qt 6 by an object.
[[maybe_unused]] QString Signature(const char* (*aSignatureOf)(int), int aType)
{
    return QLatin1String(aSignatureOf(aType));
}

[[maybe_unused]] QString Signature(const char* (*aSignatureOf)(QMetaType), int aType)
{
    return QLatin1String(aSignatureOf(QMetaType(aType)));
}

QString Call(const QMetaMethod& aMethod)
{
    QString signature;
    for (int i = 0; i < aMethod.parameterCount(); ++i) {
        signature += Signature(&QDBusMetaType::typeToSignature, aMethod.parameterType(i));
    }
    return QString::fromLatin1(aMethod.name()) + '(' + signature + ')';
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
    return type.isEmpty() ? QString() : Signature(&QDBusMetaType::typeToSignature, QMetaType::type(type));
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
