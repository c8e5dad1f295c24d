#include <MPL_Types.h>

#include <QDBusMetaType>

namespace MPL
{

void RegisterAllMetaTypes()
{
    ServiceObject::RegisterMetaType();
    BrowserHierarchy::RegisterMetaType();
    TransactionId::RegisterMetaType();

    qDBusRegisterMetaType<ResultDictionary>();
    qDBusRegisterMetaType<QList<ResultDictionary>>();
    qDBusRegisterMetaType<PresetDictionary>();
    qDBusRegisterMetaType<SeekMode>();
    qDBusRegisterMetaType<RepeatMode>();
    qDBusRegisterMetaType<ShuffleMode>();
    qDBusRegisterMetaType<BufferedMedia>();
    qDBusRegisterMetaType<QVector<ushort>>();

    // The names under which signals and slots write these types, as the meta-object system compares names as
    // text.
    qRegisterMetaType<CinemoUtils::DeviceInfo>("DeviceInfo");
    qRegisterMetaType<ResultDictionary>("MPL::ResultDictionary");
    qRegisterMetaType<PresetDictionary>("PresetDictionary");
    qRegisterMetaType<QList<QMap<QString, QVariant>>>("QList<MPL::ResultDictionary>");
    qRegisterMetaType<QList<QMap<QString, QString>>>("QList<PresetDictionary>");
    qRegisterMetaType<QList<uint>>("intList");
    qRegisterMetaType<SourceInfo>("SourceInfo");
    qRegisterMetaType<SeekMode>("SeekMode");
    qRegisterMetaType<RepeatMode>("RepeatMode");
    qRegisterMetaType<ShuffleMode>("ShuffleMode");
    qRegisterMetaType<MediaSourceState>("MediaSourceState");
    qRegisterMetaType<BufferedMedia>("BufferedMedia");
    qRegisterMetaType<QGenericArgument>("QGenericArgument");
}

} // namespace MPL
