/// @file
/// Identifies one asynchronous request of one client. The Browser interface repeats it in the reply signal,
/// so that a client can tell its own answers from those of others:
///
///     MPL::TransactionIdCreator ids(connection.baseService());
///     const MPL::TransactionId mine = ids.Create();
///     browser.RequestStart(mine);          // later: SignalReplyStart(tid, …) with tid == mine
#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QString>

namespace MPL
{

/// The identity of one request: whose it is, and its number.
class TransactionId
{
public:
    /// @{
    /// An empty id: no D-Bus id, counter 0xFFFFFFFF.
    TransactionId() = default;
    TransactionId(const QString& aDbusId, uint aRequestId);
    /// @}

    /// The requesting client's D-Bus id.
    const QString& GetDbusId() const { return m_DbusId; }
    /// The client's request counter.
    uint GetRequestId() const { return m_RequestId; }
    /// @{
    /// True when the D-Bus id has no characters and the counter is 0xFFFFFFFF.
    bool IsEmpty() const;
    bool operator==(const TransactionId& aOther) const;
    /// @}

    /// Registers the type for D-Bus, and its name without the namespace.
    static void RegisterMetaType();

private:
    friend const QDBusArgument& operator>>(const QDBusArgument& aArgument, TransactionId& aId);

    QString m_DbusId;
    uint m_RequestId = 0xFFFFFFFF;
};

/// @{
/// On the bus `(su)`. Anything else is read as an empty id.
QDBusArgument& operator<<(QDBusArgument& aArgument, const TransactionId& aId);
const QDBusArgument& operator>>(const QDBusArgument& aArgument, TransactionId& aId);
/// @}

/// Hands out the ids of one client with counters 1, 2, 3 and so on. The counter wraps at 32 bits, unguarded.
/// Not thread-safe: one creator belongs to one client object.
class TransactionIdCreator
{
public:
    /// For the client with this D-Bus id.
    TransactionIdCreator(const QString& aDbusId);

    /// Returns the next id; never fails.
    TransactionId Create();

private:
    QString m_DbusId;
    uint m_LastRequestId = 0;
};

} // namespace MPL

Q_DECLARE_METATYPE(MPL::TransactionId)
