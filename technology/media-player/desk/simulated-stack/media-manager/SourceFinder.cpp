#include "SourceFinder.h"

#include <MPL_ServiceNames.h>

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace sim
{
namespace
{

// A service that does not answer in time may be slow, as on a busy machine, or hang: the next look-up, for
// which nobody waits, has twice the time.
constexpr int kLookUpMs = 2000;
constexpr int kMostCutOff = 5;
constexpr int kPauseMs = 1000;

const QLatin1String kObjectManager("org.freedesktop.DBus.ObjectManager");

bool IsMediaSource(const QString& aName)
{
    return aName.startsWith(QLatin1String("com.talvex.DBus.MediaPlayer.MediaSource.")) ||
           aName == QLatin1String("com.talvex.DBus.Examples.MediaSourceTest");
}

} // namespace

SourceFinder::SourceFinder(const QDBusConnection& aBus, QObject* aParent) : QObject(aParent), m_Bus(aBus) {}

void SourceFinder::Start()
{
    m_Bus.connect(MPL::MPL_DBUS_SERVICE_NAME, MPL::MPL_DBUS_OBJECT_PATH, MPL::MPL_DBUS_SERVICE_NAME,
                  QStringLiteral("NameOwnerChanged"), this, SLOT(OwnerChanged(QString, QString, QString)));
    for (const char* member : {"InterfacesAdded", "InterfacesRemoved"}) {
        m_Bus.connect(QString(), QString(), kObjectManager, QLatin1String(member), this,
                      SLOT(ObjectsChanged(QDBusMessage)));
    }
    // Asked for after the signal above is subscribed to, so that no service falls between the two. Until the
    // answer is in, nothing is known.
    const QDBusMessage call =
        QDBusMessage::createMethodCall(MPL::MPL_DBUS_SERVICE_NAME, MPL::MPL_DBUS_OBJECT_PATH,
                                       MPL::MPL_DBUS_SERVICE_NAME, QStringLiteral("ListNames"));
    auto* watcher = new QDBusPendingCallWatcher(m_Bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        TakeNames(QDBusPendingReply<QStringList>(*watcher).value());
    });
}

// No names are listed when the question has failed.
void SourceFinder::TakeNames(const QStringList& aNames)
{
    for (const QString& name : aNames) {
        if (IsMediaSource(name) && m_Services.count(name) == 0) {
            StartLookUp(name);
        }
    }
    m_Listed = true;
    TellIfSettled();
}

void SourceFinder::OwnerChanged(const QString& aName, const QString& /*oldOwner*/, const QString& aNewOwner)
{
    if (!IsMediaSource(aName)) {
        return;
    }
    Forget(aName);
    if (!aNewOwner.isEmpty()) {
        StartLookUp(aName);
    }
}

void SourceFinder::ObjectsChanged(const QDBusMessage& aSignal)
{
    for (const auto& [name, service] : m_Services) {
        // Before its first answer the owner is not known; that answer may have been given before the change.
        if (service.owner == aSignal.service() || service.owner.isEmpty()) {
            StartLookUp(name);
        }
    }
}

// In place of one that runs.
void SourceFinder::StartLookUp(const QString& aName)
{
    Service& service = m_Services[aName];
    service.lookUp = std::make_unique<LookUp>(m_Bus, aName, kLookUpMs << service.cutOff);
    connect(service.lookUp.get(), &LookUp::Answered, this,
            [&service](const QString& aOwner) { service.owner = aOwner; });
    connect(service.lookUp.get(), &LookUp::Finished, this, [this, aName] { Finish(aName); });
}

void SourceFinder::Finish(const QString& aName)
{
    Service& service = m_Services[aName];
    QStringList now = service.lookUp->Found();
    service.cutOff = service.lookUp->WasCutOff() ? service.cutOff + 1 : 0;
    if (service.cutOff > 0) {
        now += service.known; // what was not seen for want of time may be there still
        now.removeDuplicates();
    }
    const QStringList before = std::exchange(service.known, now);
    service.lookUp.release()->deleteLater(); // it is telling us that it has finished
    if (service.cutOff > 0 && service.cutOff < kMostCutOff) {
        QTimer::singleShot(kPauseMs, this, [this, aName] { LookUpAgain(aName); });
    }
    Tell(&SourceFinder::Lost, aName, before, now);
    Tell(&SourceFinder::Found, aName, now, before);
    TellIfSettled();
}

// Unless it has gone meanwhile, or is looked at for another reason.
void SourceFinder::LookUpAgain(const QString& aName)
{
    const auto service = m_Services.find(aName);
    if (service != m_Services.end() && service->second.cutOff > 0 && service->second.lookUp == nullptr) {
        StartLookUp(aName);
    }
}

void SourceFinder::Forget(const QString& aName)
{
    const auto gone = m_Services.find(aName);
    if (gone == m_Services.end()) {
        return;
    }
    const QStringList known = gone->second.known;
    m_Services.erase(gone);
    Tell(&SourceFinder::Lost, aName, known, {});
    TellIfSettled();
}

void SourceFinder::Tell(Signal aSignal, const QString& aName, const QStringList& aPaths,
                        const QStringList& aExcept)
{
    for (const QString& path : aPaths) {
        if (!aExcept.contains(path)) {
            Q_EMIT(this->*aSignal)({aName, QDBusObjectPath(path)});
        }
    }
}

bool SourceFinder::IsSettled() const
{
    return m_Listed && std::none_of(m_Services.begin(), m_Services.end(), [](const auto& aEntry) {
               return aEntry.second.lookUp != nullptr && aEntry.second.cutOff == 0;
           });
}

void SourceFinder::TellIfSettled()
{
    if (IsSettled()) {
        Q_EMIT Settled();
    }
}

} // namespace sim
