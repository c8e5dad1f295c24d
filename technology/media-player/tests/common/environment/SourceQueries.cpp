// Questions to the running stack, answered synchronously, and the choice of the active source.
#include "Constants.h"
#include <MPL_DBusUtils.h>
#include <MPL_MediaPlayerLib.h>
#include <MPL_Parameters.h>
#include <MPL_TestEnvironment.h>

#include <QDBusPendingReply>
#include <QDebug>
#include <QThread>

#include <algorithm>
#include <memory>

namespace
{

constexpr int kIndexPolls = 100;
constexpr unsigned long kSecondsBetweenPolls = 5;
constexpr unsigned int kIndexCompletePercent = 100;

using MediaSource = ComTalvexDBusMediaPlayerMediaSourceInterface;

// The mass-storage source at this path, if it reports this name; otherwise null.
std::unique_ptr<MediaSource> SourceIfNamed(const QString& aName, const QString& aPath,
                                           const QDBusConnection& aConnection)
{
    auto source = std::make_unique<MediaSource>(MPL::MPL_MASS_STORAGE_SERVICE_NAME, aPath, aConnection);
    QDBusPendingReply<QString> reply = source->GetSourceName();
    reply.waitForFinished();
    if (reply.isError()) {
        qCritical() << "DBus error" << reply.error().message();
        return nullptr;
    }
    if (reply.value() != aName) {
        return nullptr;
    }
    return source;
}

bool IsListed(const QList<MPL::ServiceObject>& aSources, const MPL::ServiceObject& aWanted)
{
    return std::any_of(aSources.begin(), aSources.end(), [&aWanted](const MPL::ServiceObject& aSource) {
        return aSource.serviceName == aWanted.serviceName && aSource.objectPath == aWanted.objectPath;
    });
}

} // namespace

bool MPL_TestEnvironment::GetIndexStatus(ComTalvexDBusMediaPlayerIndexerInfoInterface* aIndexer,
                                         QString& aStatus)
{
    if (aIndexer == nullptr) {
        return false;
    }
    QDBusPendingReply<QString> reply = aIndexer->GetStatus();
    reply.waitForFinished();
    if (reply.isError()) {
        qCritical() << "IndexerInfo GetStatus DBus error " << reply.error().message();
        return false;
    }
    aStatus = reply.value();
    return true;
}

bool MPL_TestEnvironment::GetIndexProgress(ComTalvexDBusMediaPlayerIndexerInfoInterface* aIndexer,
                                           unsigned int& aProgress)
{
    if (aIndexer == nullptr) {
        return false;
    }
    QDBusPendingReply<uint> reply = aIndexer->GetProgress();
    reply.waitForFinished();
    if (reply.isError()) {
        // Shares its wording with the status query: see "Kept on purpose" in docs/architecture.md.
        qCritical() << "IndexerInfo GetStatus DBus error " << reply.error().message();
        return false;
    }
    aProgress = reply.value();
    return true;
}

bool MPL_TestEnvironment::WaitForIndexFinished(const QString& aIndexerObjectPath)
{
    qDebug() << "MPL_TestEnvironment::WaitForIndexFinished -- Object path =" << aIndexerObjectPath;
    ComTalvexDBusMediaPlayerIndexerInfoInterface indexer(MPL::MPL_MASS_STORAGE_SERVICE_NAME,
                                                         aIndexerObjectPath, GetDbusConnection());
    QString status;
    unsigned int progress = 0;
    if (!GetIndexStatus(&indexer, status) || !GetIndexProgress(&indexer, progress)) {
        return false;
    }
    qDebug() << "MPL_TestEnvironment::WaitForIndexFinished -- IndexerInfo status:" << status
             << ", Progress:" << progress;
    int poll = 0;
    while ((progress != kIndexCompletePercent || status != MPL_TEST_INDEXING_COMPLETED) &&
           poll != kIndexPolls) {
        QThread::sleep(kSecondsBetweenPolls);
        ++poll;
        if (!GetIndexProgress(&indexer, progress) || !GetIndexStatus(&indexer, status)) {
            return false;
        }
        qDebug() << "IndexerInfo status:" << status << ", Progress:" << progress << "%, " << poll;
    }
    return status == MPL_TEST_INDEXING_COMPLETED;
}

bool MPL_TestEnvironment::GetMediaCapability(ComTalvexDBusMediaPlayerMediaSourceInterface* aSource,
                                             const QString& aCapability, QDBusObjectPath& aPath)
{
    if (aSource == nullptr) {
        return false;
    }
    QDBusPendingReply<QDBusObjectPath> reply = aSource->GetCapability(aCapability);
    reply.waitForFinished();
    if (reply.isError()) {
        qCritical() << "MPL_TestEnvironment::GetMediaCapability -- DBus error" << reply.error().message();
        return false;
    }
    aPath = reply.value();
    return true;
}

bool MPL_TestEnvironment::GetMediaSourceCapabilities(const QString& aSourceName,
                                                     QMap<QString, QDBusObjectPath>& aCapabilities,
                                                     QString& aObjectPath)
{
    const QDBusConnection connection = GetDbusConnection();
    if (!MPL::IsServiceRunning(MPL::MPL_MASS_STORAGE_SERVICE_NAME, connection)) {
        qCritical() << "Service not running:" << MPL::MPL_MASS_STORAGE_SERVICE_NAME;
        return false;
    }
    qDebug() << "MPL_TestEnvironment::GetMediaSourceCapabilities -- Calling "
                "MPL::FindServiceObjectPathsByInterface";
    QStringList mediaSourceList;
    MPL::FindServiceObjectPathsByInterface(MPL::MPL_MASS_STORAGE_SERVICE_NAME,
                                           MPL::MPL_MEDIA_SOURCE_INTERFACE_NAME, connection, mediaSourceList);
    qDebug() << "MPL_TestEnvironment::GetMediaSourceCapabilities -- Finished "
                "MPL::FindServiceObjectPathsByInterface. mediaSourceList has"
             << mediaSourceList.size() << "items";

    for (const QString& path : qAsConst(mediaSourceList)) {
        const std::unique_ptr<MediaSource> source = SourceIfNamed(aSourceName, path, connection);
        if (!source) {
            continue;
        }
        aObjectPath = path;
        for (const QString& name : {MPL::MPL_FUNCTIONALITY_BROWSE, MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL,
                                    MPL::MPL_FUNCTIONALITY_INDEX, MPL::MPL_FUNCTIONALITY_MEDIA_INFO,
                                    MPL::MPL_FUNCTIONALITY_PLAYQUEUE}) {
            QDBusObjectPath capabilityPath;
            if (GetMediaCapability(source.get(), name, capabilityPath)) {
                aCapabilities[name] = capabilityPath;
            }
        }
        return true;
    }
    return false;
}

QString MPL_TestEnvironment::GetActiveSourceStatus(MediaSourceClient* aClient)
{
    QDBusPendingReply<QString> reply = aClient->asyncCall(QStringLiteral("GetMediaSourceStatus"));
    reply.waitForFinished();
    if (reply.isError()) {
        qCritical() << "MPL_TestEnvironment::GetActiveSourceStatus Failed to get media source status of "
                       "active source. Received error of"
                    << reply.error();
        return {};
    }
    QMap<QString, QString> parameters;
    MPL::GetParameters(reply.value(), parameters);
    return parameters.value(MPL::MPL_SOURCE_STATUS_KEY_SOURCE_STATE);
}

bool MPL_TestEnvironment::SetActiveMediaSource(const MPL::ServiceObject& aSource,
                                               ComTalvexDBusMediaPlayerMediaManagerInterface* aManager)
{
    if (aManager == nullptr) {
        return false;
    }
    QDBusPendingReply<QList<MPL::ServiceObject>> sources = aManager->GetAvailableMediaSources();
    sources.waitForFinished();
    if (sources.isError()) {
        qCritical() << "MediaManager::GetAvailableMediaSource error" << sources.error();
        return false;
    }
    if (!IsListed(sources.value(), aSource)) {
        return false;
    }
    QDBusPendingReply<> reply = aManager->SetActiveMediaSource(aSource);
    reply.waitForFinished();
    if (reply.isError()) {
        qCritical() << "MediaManager SetActiveMediaSource error" << reply.error();
        return false;
    }
    return true;
}
