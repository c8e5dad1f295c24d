/// Finds the media sources of a bus as they come and go: services by the names they own, objects by
/// introspection, and anew whenever a service says that it has added or removed an object
/// (org.freedesktop.DBus.ObjectManager).
#pragma once

#include <MPL_ServiceObject.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QStringList>

namespace sim
{

class SourceFinder : public QObject
{
    Q_OBJECT

public:
    explicit SourceFinder(const QDBusConnection& aBus, QObject* aParent = nullptr);

    /// Also looks at what is on the bus already. Does not block.
    void Start();

    /// False while a look-up runs: a source may then be on the bus and not yet found.
    bool IsSettled() const { return m_LookUps == 0; }

Q_SIGNALS:
    void Found(const MPL::ServiceObject& aSource);
    void Lost(const MPL::ServiceObject& aSource);
    void Settled();

private Q_SLOTS:
    void OwnerChanged(const QString& aName, const QString& aOldOwner, const QString& aNewOwner);
    void ObjectsChanged(const QDBusMessage& aSignal);

private:
    // One service, and its look-up while one runs. Replies of an older look-up are told by its number.
    struct Service {
        QString owner;
        QStringList known;
        uint lookUp = 0;
        int inFlight = 0;
        QStringList found;
        int asked = 0;
        QElapsedTimer time;
    };

    void LookUp(const QString& aName);
    void Introspect(const QString& aName, const QString& aPath);
    void Read(Service& aService, const QString& aName, const QString& aPath, const QString& aXml);
    void Finish(const QString& aName);
    void Forget(const QString& aName);
    void EndLookUp();

    QDBusConnection m_Bus;
    QMap<QString, Service> m_Services;
    uint m_LastLookUp = 0;
    int m_LookUps = 0;
};

} // namespace sim
