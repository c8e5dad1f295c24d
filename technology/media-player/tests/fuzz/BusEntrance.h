/// Where Qt takes in what libdbus has read from a bus.
#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <dbus/dbus.h>

namespace fuzz
{

/// Hands messages to Qt's own receiver on the calling thread, in a Qt application that knows the stack's
/// types and keeps its log to itself. The connection is to a socket on which nobody ever says a word: no bus,
/// no other process and no other thread has a part in it.
class BusEntrance : public QObject
{
    Q_OBJECT

public:
    BusEntrance();

    const QDBusConnection& Connection() const { return m_Connection; }

    /// All that listen on the connection have heard the message when this returns. Returns it as those see it
    /// that want it as a whole, from whichever interface of the stack.
    const QDBusMessage& Deliver(DBusMessage* aMessage);

public Q_SLOTS:
    void Note(const QDBusMessage& aMessage) { m_Last = aMessage; }

private:
    int m_ArgumentCount = 1;
    char m_Name[5] = "fuzz";
    char* m_Arguments[2] = {m_Name, nullptr};
    QCoreApplication m_Application{m_ArgumentCount, m_Arguments};
    QDBusConnection m_Connection;
    QDBusMessage m_Last;
};

} // namespace fuzz
