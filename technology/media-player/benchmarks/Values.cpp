// Reading a list of the stack's values out of a message: ours, and the same members read one by one.
#include <MPL_Types.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>

#include <benchmark/benchmark.h>

#include <tuple>

namespace
{

// A list as it comes over a bus: sent to this program itself.
class Received : private QDBusVirtualObject
{
public:
    explicit Received(const QVariant& aList)
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.registerVirtualObject(QStringLiteral("/"), this);
        QDBusMessage call = QDBusMessage::createMethodCall(bus.baseService(), QStringLiteral("/"), QString(),
                                                           QStringLiteral("Take"));
        bus.call(call << aList);
    }

    ~Received() override { QDBusConnection::sessionBus().unregisterObject(QStringLiteral("/")); }

    // A copy is read from the list's beginning.
    QDBusArgument List() const { return m_List; }

private:
    QString introspect(const QString& /*aPath*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& aMessage, const QDBusConnection& aConnection) override
    {
        m_List = aMessage.arguments().value(0).value<QDBusArgument>();
        return aConnection.send(aMessage.createReply());
    }

    QDBusArgument m_List;
};

template <typename... Members>
void ReadOne(const QDBusArgument& aArgument, std::tuple<Members...>& aValue)
{
    aArgument.beginStructure();
    std::apply([&](Members&... aMembers) { (aArgument >> ... >> aMembers); }, aValue);
    aArgument.endStructure();
}

template <typename Value>
void ReadOne(const QDBusArgument& aArgument, Value& aValue)
{
    aArgument >> aValue;
}

template <typename Value>
int ReadAll(const QDBusArgument& aArgument)
{
    QList<Value> values;
    aArgument.beginArray();
    while (!aArgument.atEnd()) {
        Value value;
        ReadOne(aArgument, value);
        values << value;
    }
    aArgument.endArray();
    return static_cast<int>(values.size());
}

// `Read` is what the list is read as, `Sent` what it was sent as.
template <typename Read, typename Sent>
void ReadList(benchmark::State& aState, const Sent& aValue)
{
    constexpr int kElements = 1000;
    MPL::RegisterAllMetaTypes();
    qDBusRegisterMetaType<QList<Sent>>();
    QList<Sent> list;
    for (int i = 0; i < kElements; ++i) {
        list << aValue;
    }
    const Received received(QVariant::fromValue(list));
    int read = 0;
    while (aState.KeepRunning()) {
        read = ReadAll<Read>(received.List());
    }
    if (read != kElements) {
        aState.SkipWithError("the list was not read");
    }
}

template <typename Sent, typename... Members>
void Compare(const std::string& aType, const Sent& aValue)
{
    benchmark::RegisterBenchmark(("Values/ours/" + aType).c_str(), &ReadList<Sent, Sent>, aValue)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(("Values/by member/" + aType).c_str(),
                                 &ReadList<std::tuple<Members...>, Sent>, aValue)
        ->Unit(benchmark::kMicrosecond);
}

const bool kRegistered = [] {
    const QString word = QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.MassStorage");
    Compare<MPL::ServiceObject, QString, QString>(
        "ServiceObject", {word, QDBusObjectPath(QStringLiteral("/com/talvex/DBus/MediaPlayer/source1"))});
    Compare<MPL::TransactionId, QString, uint>("TransactionId", {word, 1});
    Compare<MPL::BrowserHierarchy, QString, QString, uint, uint>("BrowserHierarchy", MPL::BrowserHierarchy());
    Compare<MPL::BufferedMedia, qlonglong, qlonglong, qulonglong, uint, uint>("BufferedMedia",
                                                                              {1, 2, 3, 4, 5});
    return true;
}();

} // namespace
