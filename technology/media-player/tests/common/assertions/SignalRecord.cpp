#include "Printers.h"
#include "SignalListener.h"
#include "environment/QtVersions.h"
#include <MPL_SignalWaiter.h>

#include <QDBusArgument>
#include <QStringList>

#include <sstream>

namespace MPL::Detail
{

bool IsReadableAs(const QVariant& aArgument, int aType)
{
    const QByteArray expected = SignatureOfType(aType);
    // Single values arrive as themselves; the stack's structures step over what they are not, as types should
    // that Qt D-Bus does not know.
    return aArgument.userType() != qMetaTypeId<QDBusArgument>() || expected.isEmpty() ||
           expected.startsWith('(') ||
           qvariant_cast<QDBusArgument>(aArgument).currentSignature() == QLatin1String(expected);
}

SignalRecord::SignalRecord(const QDBusAbstractInterface& aProxy, const QMetaMethod& aSignal, int aLimitMs,
                           Reader aReader)
    : m_Listener(std::make_unique<SignalListener>(aProxy)),
      m_Reader(std::move(aReader)),
      m_Name(QString::fromLatin1(aSignal.name())),
      m_LimitMs(aLimitMs)
{
}

SignalRecord::~SignalRecord() = default;

testing::AssertionResult SignalRecord::Take(const Matcher& aMatches, const QVariantList& aExpected)
{
    const auto matches = [this, &aMatches](const QDBusMessage& aMessage) {
        return aMessage.member() == m_Name && aMatches(aMessage.arguments());
    };
    if (m_Listener->Take(matches, m_Listener->IsListening() ? m_LimitMs : 0)) {
        return testing::AssertionSuccess() << Text(m_Name, aExpected).toStdString() << " arrived";
    }
    return testing::AssertionFailure()
           << Text(m_Name, aExpected).toStdString() << " did not arrive within " << m_LimitMs << " ms from "
           << m_Listener->Origin().toStdString() << Instead().toStdString();
}

QString SignalRecord::Text(const QString& aName, const QVariantList& aArguments) const
{
    std::ostringstream text;
    const char* separator = "";
    text << aName.toStdString() << "(";
    for (const QVariant& argument : aArguments) {
        text << std::exchange(separator, ", ");
        PrintBareValue(argument, &text);
    }
    text << ")";
    return QString::fromStdString(text.str());
}

QString SignalRecord::Instead() const
{
    if (!m_Listener->IsListening()) {
        return QStringLiteral("\nthe proxy has no connection to a bus, so no signal can come");
    }
    QString text;
    const QVector<QDBusMessage> left = m_Listener->Left();
    for (const QDBusMessage& message : left) {
        const QVariantList arguments = message.arguments();
        text += QStringLiteral("\n  ") +
                Text(message.member(), message.member() == m_Name ? m_Reader(arguments) : arguments);
    }
    text = (text.isEmpty() ? QStringLiteral("\nno other signal arrived either")
                           : QStringLiteral("\narrived instead:")) +
           text;
    return m_Listener->IsServiceThere()
               ? text
               : text + QStringLiteral("\nnobody owns that name on the bus now: did the service end?");
}

} // namespace MPL::Detail
