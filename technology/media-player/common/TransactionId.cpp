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

QDBusArgument& operator<<(QDBusArgument& aRgument, const TransactionId& aId)
{
    aRgument.beginStructure();
    aRgument << aId.GetDbusId() << aId.GetRequestId();
    aRgument.endStructure();
    return aRgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aRgument, TransactionId& aId)
{
    aId = {};
    if (Detail::OpenStructure(aRgument, {"(su)"})) {
        aRgument >> aId.m_DbusId >> aId.m_RequestId;
        aRgument.endStructure();
    }
    return aRgument;
}

TransactionIdCreator::TransactionIdCreator(const QString& aDbusId) : m_DbusId(aDbusId) {}

TransactionId TransactionIdCreator::Create()
{
    return {m_DbusId, ++m_LastRequestId};
}

} // namespace MPL
