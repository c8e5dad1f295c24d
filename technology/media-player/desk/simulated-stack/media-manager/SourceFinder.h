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
    explicit SourceFinder(const QDBusConnection& bus, QObject* parent = nullptr);

    /// Also looks at what is on the bus already. Does not block.
    void Start();

    /// False while a look-up runs: a source may then be on the bus and not yet found.
    bool IsSettled() const { return m_LookUps == 0; }

Q_SIGNALS:
    void Found(const MPL::ServiceObject& source);
    void Lost(const MPL::ServiceObject& source);
    void Settled();

private Q_SLOTS:
    void OwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);
    void ObjectsChanged(const QDBusMessage& signal);

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

    void LookUp(const QString& name);
    void Introspect(const QString& name, const QString& path);
    void Read(Service& service, const QString& name, const QString& path, const QString& xml);
    void Finish(const QString& name);
    void Forget(const QString& name);
    void EndLookUp();

    QDBusConnection m_Bus;
    QMap<QString, Service> m_Services;
    uint m_LastLookUp = 0;
    int m_LookUps = 0;
};

} // namespace sim
