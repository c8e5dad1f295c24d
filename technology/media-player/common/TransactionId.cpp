#include "Structures.h"
#include <MPL_TransactionId.h>

#include <QDBusMetaType>

namespace MPL
{

TransactionId::TransactionId(const QString& aDbusId, uint aRequestId)
    : m_DbusId(aDbusId), m_RequestId(aRequestId)
{
}

bool TransactionId::IsEmpty() const
{
    return m_DbusId.isEmpty() && m_RequestId == TransactionId().m_RequestId;
}

bool TransactionId::operator==(const TransactionId& aOther) const
{
    return m_RequestId == aOther.m_RequestId && m_DbusId == aOther.m_DbusId;
}

void TransactionId::RegisterMetaType()
{
    qDBusRegisterMetaType<TransactionId>();
    qRegisterMetaType<TransactionId>("TransactionId");
}

QDBusArgument& operator<<(QDBusArgument& aArgument, const TransactionId& aId)
{
    aArgument.beginStructure();
    aArgument << aId.GetDbusId() << aId.GetRequestId();
    aArgument.endStructure();
    return aArgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aArgument, TransactionId& aId)
{
    aId = {};
    if (Detail::OpenStructure(aArgument, {"(su)"})) {
        aArgument >> aId.m_DbusId >> aId.m_RequestId;
        aArgument.endStructure();
    }
    return aArgument;
}

TransactionIdCreator::TransactionIdCreator(const QString& aDbusId) : m_DbusId(aDbusId) {}

TransactionId TransactionIdCreator::Create()
{
    return {m_DbusId, ++m_LastRequestId};
}

} // namespace MPL
