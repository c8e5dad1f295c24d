// Every proxy has exactly the members of its interface, each with its signatures.
#include "Interfaces.h"
#include <MPL_Proxies.h>
#include <MPL_Types.h>

#include <QDBusMetaType>
#include <QMetaMethod>

#include <gtest/gtest.h>

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
    EXPECT_EQ(proxy->interface(), QLatin1String("com.talvex.DBus.MediaPlayer.") + GetParam().name);

    QStringList methods;
    for (const QMetaMethod& method : OwnMembers(*proxy, QMetaMethod::Slot)) {
        methods.append(Call(method) + QStringLiteral("->") + Reply(method));
    }
    methods.sort();
    EXPECT_EQ(methods, Words(GetParam().methods))
        << "found: " << methods.join(QLatin1Char(' ')).toStdString();

    QStringList signalMembers;
    for (const QMetaMethod& signal : OwnMembers(*proxy, QMetaMethod::Signal)) {
        signalMembers.append(Call(signal));
    }
    signalMembers.sort();
    EXPECT_EQ(signalMembers, Words(GetParam().signalMembers))
        << "found: " << signalMembers.join(QLatin1Char(' ')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Of, AProxy, testing::ValuesIn(Interfaces()),
                         [](const auto& aInfo) { return std::string(aInfo.param.name); });

} // namespace
