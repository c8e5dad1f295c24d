#include "Methods.h"

#include <MPL_IndexerInfoProxy.h>
#include <MPL_MediaManagerProxy.h>
#include <MPL_MediaSourceProxy.h>

#include <algorithm>

namespace chaos
{
namespace
{

using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;
using Source = ComTalvexDBusMediaPlayerMediaSourceInterface;
using Indexer = ComTalvexDBusMediaPlayerIndexerInfoInterface;

struct Method {
    const char* program;
    const char* name;
    testing::AssertionResult (MPL::SimulatedFaults::*set)(const QString& aProgram, const QString& aMethod,
                                                          MPL::ReplyFault aFault);

    QString InWords() const
    {
        return QStringLiteral("%1 %2").arg(QLatin1String(program), QLatin1String(name));
    }
};

constexpr const char* kManagerProgram = "media_manager";
constexpr const char* kSourceProgram = "media_source_mass_storage";

const QVector<Method>& Methods()
{
    static const QVector<Method> kMethods{
        {kManagerProgram, "GetAvailableMediaSources", &MPL::SimulatedFaults::Reply<Manager>},
        {kManagerProgram, "SetActiveMediaSource", &MPL::SimulatedFaults::Reply<Manager>},
        {kSourceProgram, "GetSourceName", &MPL::SimulatedFaults::Reply<Source>},
        {kSourceProgram, "GetCapability", &MPL::SimulatedFaults::Reply<Source>},
        {kSourceProgram, "GetMediaSourceStatus", &MPL::SimulatedFaults::Reply<Source>},
        {kSourceProgram, "GetStatus", &MPL::SimulatedFaults::Reply<Indexer>},
        {kSourceProgram, "GetProgress", &MPL::SimulatedFaults::Reply<Indexer>}};
    return kMethods;
}

} // namespace

const QVector<QString>& MethodNames()
{
    static const QVector<QString> kNames = [] {
        QVector<QString> names;
        for (const Method& method : Methods()) {
            names << method.InWords();
        }
        return names;
    }();
    return kNames;
}

testing::AssertionResult SetReply(MPL::SimulatedFaults& aFaults, const QString& aMethodName,
                                  MPL::ReplyFault aReply)
{
    const Method& method = Methods().at(MethodNames().indexOf(aMethodName));
    return (aFaults.*method.set)(QLatin1String(method.program), QLatin1String(method.name), aReply);
}

} // namespace chaos
