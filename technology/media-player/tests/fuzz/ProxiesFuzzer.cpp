// What the proxies make of signals and replies, with whatever arguments a service sends them.
#include "BusEntrance.h"
#include "BusMessages.h"
#include "Fuzzing.h"
#include "MethodSignature.h"
#include <MPL_Proxies.h>
#include <MPL_TestPrinters.h>

#include <QSignalSpy>

#include <map>
#include <memory>
#include <vector>

namespace
{

using Reader = void (*)(const QVariant&);

// As a pending reply reads it.
template <typename Value>
void Read(const QVariant& aArgument)
{
    testing::PrintToString(qdbus_cast<Value>(aArgument));
}

// By the type's name in the proxies' methods.
const std::map<QByteArray, Reader> kReaders{
    {"", [](const QVariant&) {}},
    {"bool", Read<bool>},
    {"uint", Read<uint>},
    {"QString", Read<QString>},
    {"QStringList", Read<QStringList>},
    {"QDBusObjectPath", Read<QDBusObjectPath>},
    {"QVariantMap", Read<QVariantMap>},
    {"QMap<QString,QVariant>", Read<QVariantMap>},
    {"QList<QVariantMap>", Read<QList<QVariantMap>>},
    {"QList<MPL::ResultDictionary>", Read<QList<MPL::ResultDictionary>>},
    {"QMap<QString,QString>", Read<QMap<QString, QString>>},
    {"MPL::ServiceObject", Read<MPL::ServiceObject>},
    {"QList<MPL::ServiceObject>", Read<QList<MPL::ServiceObject>>},
    {"MPL::BufferedMedia", Read<MPL::BufferedMedia>},
    {"QVector<MPL::BrowserHierarchy>", Read<QVector<MPL::BrowserHierarchy>>},
    {"QList<MPL::BrowserHierarchy>", Read<QVector<MPL::BrowserHierarchy>>}}; // its name with Qt 6

QByteArray ReplyType(const QMetaMethod& aMethod)
{
    const QByteArray type = aMethod.typeName();
    const auto begin = type.indexOf('<') + 1;
    return type.mid(begin, type.lastIndexOf('>') - begin).trimmed();
}

struct Signal {
    QString signature;
    std::unique_ptr<QSignalSpy> heard;
};

struct Reply {
    QString signature;
    Reader reader = nullptr;
};

// All nine proxies, with everything that can reach them, by interface and member.
class Proxies
{
public:
    explicit Proxies(const QDBusConnection& aConnection)
    {
        Add<ComTalvexDBusMediaPlayerBrowserInterface, ComTalvexDBusMediaPlayerIndexerInfoInterface,
            ComTalvexDBusMediaPlayerMMEMountInterface, ComTalvexDBusMediaPlayerMediaInfoInterface,
            ComTalvexDBusMediaPlayerMediaManagerInterface, ComTalvexDBusMediaPlayerMediaSourceInterface,
            ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface,
            ComTalvexDBusMediaPlayerPlaybackControlInterface, ComTalvexDBusMediaPlayerPlayQueueInterface>(
            aConnection);
    }

    std::map<QString, Signal> signalMembers;
    std::map<QString, Reply> replies;

private:
    template <typename... Interfaces>
    void Add(const QDBusConnection& aConnection)
    {
        (AddProxy(std::make_unique<Interfaces>(QString(), "/object", aConnection)), ...);
    }

    void AddProxy(std::unique_ptr<QDBusAbstractInterface> aProxy)
    {
        const QMetaObject* meta = aProxy->metaObject();
        for (int index = meta->methodOffset(); index < meta->methodCount(); ++index) {
            const QMetaMethod member = meta->method(index);
            const QString name = aProxy->interface() + '.' + QString::fromLatin1(member.name());
            if (member.methodType() == QMetaMethod::Signal) {
                const QByteArray signal = QByteArray::number(QSIGNAL_CODE) + member.methodSignature();
                signalMembers[name] = {MPL::Doubles::SignatureOfArguments(member),
                                       std::make_unique<QSignalSpy>(aProxy.get(), signal.constData())};
            } else {
                AddReply(name, ReplyType(member));
            }
        }
        m_Proxies.push_back(std::move(aProxy));
    }

    void AddReply(const QString& aName, const QByteArray& aType)
    {
        const auto reader = kReaders.find(aType);
        fuzz::Promise(reader != kReaders.end(), aType.constData());
        const QString signature =
            aType.isEmpty() ? QString() : MPL::Doubles::SignatureOfType(QMetaType::type(aType));
        replies[aName] = {signature, reader->second};
    }

    std::vector<std::unique_ptr<QDBusAbstractInterface>> m_Proxies;
};

// What has the signal's signature is heard, and nothing else; one without arguments is heard with any.
void ExpectSignal(Signal& aSignal, const QDBusMessage& aMessage)
{
    const bool isIt = aSignal.signature.isEmpty() || aMessage.signature() == aSignal.signature;
    fuzz::Promise(aSignal.heard->count() == (isIt ? 1 : 0), "a signal is heard if it is the one described");
    for (const QVariantList& values : *aSignal.heard) {
        testing::PrintToString(values);
    }
    aSignal.heard->clear();
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    static fuzz::BusEntrance s_Entrance;
    static Proxies s_Proxies(s_Entrance.Connection());
    const fuzz::Message message = fuzz::MakeMessage(fuzz::ToBytes(aData, aSize));
    if (!message) {
        return 0;
    }
    const QDBusMessage delivered = s_Entrance.Deliver(message.get());
    const QString name = delivered.interface() + '.' + delivered.member();
    if (const auto signal = s_Proxies.signalMembers.find(name); signal != s_Proxies.signalMembers.end()) {
        ExpectSignal(signal->second, delivered);
    }
    const auto reply = s_Proxies.replies.find(name);
    if (reply != s_Proxies.replies.end() && delivered.signature().startsWith(reply->second.signature)) {
        reply->second.reader(delivered.arguments().value(0));
    }
    return 0;
}
