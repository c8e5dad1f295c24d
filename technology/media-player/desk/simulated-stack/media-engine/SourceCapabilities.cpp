#include "SourceCapabilities.h"

#include "BrowserObject.h"
#include "Catalogue.h"
#include "IndexerObject.h"
#include "MediaInfoObject.h"
#include "MediaLibrary.h"
#include "PlayQueueObject.h"
#include "PlaybackControlObject.h"
#include <MPL_MediaPlayerLib.h>

#include <utility>

namespace sim
{

// The members are in the order in which they need each other.
struct SourceCapabilities::Engine {
    Engine(const FaultPlan& aFaults, const SourceSetup& aSetup)
        : indexer(aSetup.mediaFolder, aSetup.mediaFolder.isEmpty() ? BuiltInCatalogue() : Tracks(), &library,
                  nullptr),
          player(&queue, nullptr),
          browserObject(&library, &queue, &player, aFaults, nullptr),
          controlObject(&player, &queue, aFaults, nullptr),
          indexerObject(&indexer, aFaults, nullptr),
          infoObject(&player, &queue, aSetup.stationArt, aFaults, nullptr),
          queueObject(&queue, &library, aFaults, nullptr)
    {
    }

    QMap<QString, std::pair<QString, QObject*>> Objects()
    {
        using namespace MPL;
        return {
            {MPL_FUNCTIONALITY_BROWSE, {MPL_OBJECT_PATH_SUFFIX_BROWSER, &browserObject}},
            {MPL_FUNCTIONALITY_PLAYBACK_CONTROL, {MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL, &controlObject}},
            {MPL_FUNCTIONALITY_INDEX, {MPL_OBJECT_PATH_SUFFIX_INDEXER, &indexerObject}},
            {MPL_FUNCTIONALITY_MEDIA_INFO, {MPL_OBJECT_PATH_SUFFIX_MEDIAINFO, &infoObject}},
            {MPL_FUNCTIONALITY_PLAYQUEUE, {MPL_OBJECT_PATH_SUFFIX_PLAYQUEUE, &queueObject}}};
    }

    MediaLibrary library;
    Indexer indexer;
    PlayQueue queue;
    Player player;
    BrowserObject browserObject;
    PlaybackControlObject controlObject;
    IndexerObject indexerObject;
    MediaInfoObject infoObject;
    PlayQueueObject queueObject;
};

SourceCapabilities::SourceCapabilities(const FaultPlan& aFaults, const QDBusConnection& aBus,
                                       SourceSetup aSetup)
    : m_Bus(aBus), m_Setup(std::move(aSetup)), m_Engine(std::make_unique<Engine>(aFaults, m_Setup))
{
    connect(&m_Engine->indexer, &Indexer::FileRejected, this, [this](const QString& aPath) {
        m_Engine->controlObject.SendEvent(MPL::MPL_EVENT_TYPE_ERROR, MPL::MPL_EVENT_UNRECOGNIZED_FORMAT,
                                          aPath);
    });
    connect(&m_Engine->library, &MediaLibrary::Changed, this, [this] {
        if (m_Setup.defaultPlayQueue && m_Engine->queue.IsEmpty() && ChangePlayQueue(0)) {
            m_Engine->queueObject.SendEvent(MPL::MPL_EVENT_TYPE_INFO,
                                            MPL::MPL_EVENT_DEFAULT_PLAYQUEUE_CREATED,
                                            QStringLiteral("%1 tracks").arg(m_Engine->queue.Count()));
        }
    });
}

SourceCapabilities::~SourceCapabilities()
{
    Withdraw();
}

bool SourceCapabilities::Export()
{
    const auto objects = m_Engine->Objects();
    for (auto object = objects.begin(); object != objects.end(); ++object) {
        if (!m_Setup.capabilities.contains(object.key())) {
            continue;
        }
        const QString path = m_Setup.objectPath + object->first;
        if (!m_Bus.registerObject(path, object->second)) {
            Withdraw();
            return false;
        }
        m_Exported.insert(object.key(), path);
    }
    m_Engine->indexer.Start();
    return true;
}

void SourceCapabilities::Withdraw()
{
    for (const QString& path : qAsConst(m_Exported)) {
        m_Bus.unregisterObject(path);
    }
    m_Exported.clear();
}

QMap<QString, QDBusObjectPath> SourceCapabilities::Paths() const
{
    QMap<QString, QDBusObjectPath> paths;
    for (auto exported = m_Exported.begin(); exported != m_Exported.end(); ++exported) {
        paths.insert(exported.key(), QDBusObjectPath(*exported));
    }
    return paths;
}

bool SourceCapabilities::ChangePlayQueue(uint aIndex)
{
    const Tracks& all = m_Engine->library.All();
    if (aIndex >= static_cast<uint>(all.size())) {
        return false;
    }
    m_Engine->queue.Load(all, aIndex);
    return true;
}

void SourceCapabilities::Pause()
{
    if (!m_Engine->queue.IsEmpty() && m_Engine->player.State() != MPL::MPL_PLAY_STATE_STOPPED) {
        m_Engine->player.Pause();
    }
}

} // namespace sim
