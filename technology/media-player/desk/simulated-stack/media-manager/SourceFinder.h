/// Finds the media sources of a bus as they come and go: services by the names they own, objects by
/// introspection, and anew whenever a service says that it has added or removed an object
/// (org.freedesktop.DBus.ObjectManager).
#pragma once

#include "LookUp.h"
#include <MPL_ServiceObject.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include <map>
#include <memory>

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
    bool IsSettled() const;

Q_SIGNALS:
    void Found(const MPL::ServiceObject& aSource);
    void Lost(const MPL::ServiceObject& aSource);
    void Settled();

private Q_SLOTS:
    void OwnerChanged(const QString& aName, const QString& aOldOwner, const QString& aNewOwner);
    void ObjectsChanged(const QDBusMessage& aSignal);

private:
    struct Service {
        QString owner;
        QStringList known;
        std::unique_ptr<LookUp> lookUp; // while one runs
        int cutOff = 0;                 // look-ups one after the other; nobody waits for the next
    };
    using Signal = void (SourceFinder::*)(const MPL::ServiceObject&);

    void TakeNames(const QStringList& aNames);
    void StartLookUp(const QString& aName);
    void Finish(const QString& aName);
    void LookUpAgain(const QString& aName);
    void Forget(const QString& aName);
    void Tell(Signal aSignal, const QString& aName, const QStringList& aPaths, const QStringList& aExcept);
    void TellIfSettled();

    QDBusConnection m_Bus;
    std::map<QString, Service> m_Services;
    bool m_Listed = false; // the services that were there at the start are known
};

} // namespace sim
