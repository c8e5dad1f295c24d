#include "Queries.h"

#include <MPL_MediaPlayerLib.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>

#include <memory>

namespace chaos
{
namespace
{

using Environment = MPL_TestEnvironment;
using Indexer = ComTalvexDBusMediaPlayerIndexerInfoInterface;
using Source = ComTalvexDBusMediaPlayerMediaSourceInterface;
using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;

// What no service answers with.
const QString kUntouched = QStringLiteral("untouched");
constexpr unsigned int kUntouchedNumber = 4711;
const QString kUntouchedPath = QStringLiteral("/untouched");

// Where the simulated sources have their object: the service's name as a path.
QString PathOf(const QString& aService)
{
    return QLatin1Char('/') + QString(aService).replace(QLatin1Char('.'), QLatin1Char('/')) +
           QStringLiteral("/1");
}

template <typename Proxy>
std::shared_ptr<Proxy> MakeProxy(const QString& aService, const QString& aPath)
{
    return std::make_shared<Proxy>(aService, aPath, Environment::GetDbusConnection());
}

QString IndexerPath()
{
    return PathOf(MPL::MPL_MASS_STORAGE_SERVICE_NAME) + MPL::MPL_OBJECT_PATH_SUFFIX_INDEXER;
}

std::shared_ptr<Source> MassStorage()
{
    return MakeProxy<Source>(MPL::MPL_MASS_STORAGE_SERVICE_NAME, PathOf(MPL::MPL_MASS_STORAGE_SERVICE_NAME));
}

QStringList NamesIf(bool aHasChanged, const char* aName)
{
    return aHasChanged ? QStringList{QLatin1String(aName)} : QStringList();
}

Call GetIndexStatus(const Step& /*step*/)
{
    return [indexer = MakeProxy<Indexer>(MPL::MPL_MASS_STORAGE_SERVICE_NAME, IndexerPath())] {
        QString status = kUntouched;
        const bool wasTrue = Environment::GetIndexStatus(indexer.get(), status);
        return Outcome{wasTrue, NamesIf(status != kUntouched, "aStatus")};
    };
}

Call GetIndexProgress(const Step& /*step*/)
{
    return [indexer = MakeProxy<Indexer>(MPL::MPL_MASS_STORAGE_SERVICE_NAME, IndexerPath())] {
        unsigned int progress = kUntouchedNumber;
        const bool wasTrue = Environment::GetIndexProgress(indexer.get(), progress);
        return Outcome{wasTrue, NamesIf(progress != kUntouchedNumber, "aProgress")};
    };
}

Call WaitForIndex(const Step& /*step*/)
{
    return [] { return Outcome{Environment::WaitForIndexFinished(IndexerPath())}; };
}

Call GetCapability(const Step& /*step*/)
{
    return [source = MassStorage()] {
        QDBusObjectPath path(kUntouchedPath);
        const bool wasTrue =
            Environment::GetMediaCapability(source.get(), MPL::MPL_FUNCTIONALITY_BROWSE, path);
        return Outcome{wasTrue, NamesIf(path.path() != kUntouchedPath, "aPath")};
    };
}

Call GetCapabilities(const Step& /*step*/)
{
    return [] {
        QMap<QString, QDBusObjectPath> capabilities;
        QString path = kUntouchedPath;
        const bool wasTrue =
            Environment::GetMediaSourceCapabilities(MPL::MPL_MASS_STORAGE_DEVICE_LABEL, capabilities, path);
        return Outcome{wasTrue, NamesIf(!capabilities.isEmpty(), "aCapabilities") +
                                    NamesIf(path != kUntouchedPath, "aObjectPath")};
    };
}

Call GetActiveStatus(const Step& /*step*/)
{
    return [source = MassStorage()] {
        return Outcome{!Environment::GetActiveSourceStatus(source.get()).isEmpty()};
    };
}

Call SetActiveSource(const Step& aStep)
{
    MPL::ServiceObject source;
    source.serviceName = aStep.object;
    source.objectPath = QDBusObjectPath(PathOf(aStep.object));
    return [source, manager = MakeProxy<Manager>(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME,
                                                 MPL::MPL_MEDIA_MANAGER_OBJECT_PATH)] {
        return Outcome{Environment::SetActiveMediaSource(source, manager.get())};
    };
}

} // namespace

QHash<int, std::function<Call(const Step& aStep)>> Queries()
{
    return {{static_cast<int>(Action::GetIndexStatus), GetIndexStatus},
            {static_cast<int>(Action::GetIndexProgress), GetIndexProgress},
            {static_cast<int>(Action::WaitForIndex), WaitForIndex},
            {static_cast<int>(Action::GetCapability), GetCapability},
            {static_cast<int>(Action::GetCapabilities), GetCapabilities},
            {static_cast<int>(Action::GetActiveStatus), GetActiveStatus},
            {static_cast<int>(Action::SetActiveSource), SetActiveSource}};
}

} // namespace chaos
