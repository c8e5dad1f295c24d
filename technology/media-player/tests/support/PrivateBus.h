/// A bus daemon of the test program's own, on a socket in a temporary folder. It ends with the object, and
/// with the program whatever happens to it.
///
///     const PrivateBus bus;
///     QDBusConnection connection = QDBusConnection::connectToBus(bus.Address(), "mine");
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace MPL::Doubles
{

class PrivateBus
{
public:
    /// Starts the daemon and waits until it says that it listens. Address() is empty if it never does, and
    /// then the reason is on standard error.
    PrivateBus();
    ~PrivateBus();

    QString Address() const { return m_Address; }

    /// From now on a connection asked for at `aAddress` is opened at `aInstead` (empty: as asked).
    static void Redirect(const QString& aAddress, const QString& aInstead);

private:
    // Qt starts any other class than its own by fork; its own by a newer way that emulators refuse.
    class ForkedProcess : public QProcess
    {
    };

    QTemporaryDir m_Folder;
    ForkedProcess m_Daemon;
    QString m_Address;
};

/// The bus that all tests of the program share. It ends after the last of them.
const PrivateBus& SharedBus();

} // namespace MPL::Doubles
