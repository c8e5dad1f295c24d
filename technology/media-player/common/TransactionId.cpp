#include <MPL_TransactionId.h>

#include <QDBusMetaType>

namespace MPL
{

TransactionId::TransactionId(const QString& dbusId, uint requestId) : m_DbusId(dbusId), m_RequestId(requestId)
{
}

bool TransactionId::IsEmpty() const
{
    return m_DbusId.isEmpty() && m_RequestId == TransactionId().m_RequestId;
}

bool TransactionId::operator==(const TransactionId& other) const
{
    return m_RequestId == other.m_RequestId && m_DbusId == other.m_DbusId;
}

void TransactionId::RegisterMetaType()
{
    qDBusRegisterMetaType<TransactionId>();
    qRegisterMetaType<TransactionId>("TransactionId");
}

QDBusArgument& operator<<(QDBusArgument& argument, const TransactionId& id)
{
    argument.beginStructure();
    argument << id.GetDbusId() << id.GetRequestId();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TransactionId& id)
{
    argument.beginStructure();
    argument >> id.m_DbusId >> id.m_RequestId;
    argument.endStructure();
    return argument;
}

TransactionIdCreator::TransactionIdCreator(const QString& dbusId) : m_DbusId(dbusId) {}

TransactionId TransactionIdCreator::Create()
{
    return {m_DbusId, ++m_LastRequestId};
}

} // namespace MPL
