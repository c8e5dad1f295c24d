// Every value type, read from arguments of any signature: the first few, as the others are read no other way.
#include "BusEntrance.h"
#include "BusMessages.h"
#include "Fuzzing.h"
#include <MPL_SignalWaiter.h>
#include <MPL_TestPrinters.h>

#include <algorithm>
#include <initializer_list>

namespace
{

constexpr int kArguments = 6; // a signal has no more

// What has another signature is read as a default value, as the stack's types promise.
template <typename Value>
void Read(const QVariant& aArgument, std::initializer_list<const char*> aSignatures)
{
    const QString signature = qvariant_cast<QDBusArgument>(aArgument).currentSignature();
    static const std::string kDefault = testing::PrintToString(Value());
    const std::string value = testing::PrintToString(qdbus_cast<Value>(aArgument));
    const bool isIts = std::any_of(aSignatures.begin(), aSignatures.end(), [&](const char* aSignature) {
        return signature == QLatin1String(aSignature);
    });
    fuzz::Promise(isIts || value == kDefault, "what is another type's is read as a default value");
}

// A default value looks the same each time.
template <typename Value>
void Print(const Value& aValue)
{
    if (!(aValue == Value())) {
        testing::PrintToString(aValue);
    }
}

// As who waits for a signal reads its arguments.
template <typename... Values>
void ReadAll(const QVariant& aArgument)
{
    (Print(MPL::Detail::ReadArgument<Values>(aArgument)), ...);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    static fuzz::BusEntrance s_Entrance;
    const fuzz::Message message = fuzz::MakeMessage(fuzz::ToBytes(aData, aSize));
    if (!message) {
        return 0;
    }
    const QVariantList arguments = s_Entrance.Deliver(message.get()).arguments().mid(0, kArguments);
    for (const QVariant& argument : arguments) {
        testing::PrintToString(argument);
        Read<MPL::ServiceObject>(argument, {"(ss)", "(so)", "(sg)"});
        Read<MPL::TransactionId>(argument, {"(su)"});
        Read<MPL::BrowserHierarchy>(argument, {"(ssuu)"});
        Read<MPL::BufferedMedia>(argument, {"(xxtuu)"});
        ReadAll<bool, int, uint, quint64, QString, QStringList, QDBusObjectPath, QList<uint>, QVariantMap,
                QList<QVariantMap>, QMap<QString, QString>, QVector<ushort>, MPL::ServiceObject,
                QList<MPL::ServiceObject>, QVector<MPL::BrowserHierarchy>>(argument);
    }
    return 0;
}
