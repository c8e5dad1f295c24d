/// @file
/// All nine client proxies of the stack's D-Bus interfaces. Each also has a header of its own.
///
/// A proxy is generated from the interface description of the same name. Its class,
/// `ComTalvexDBusMediaPlayer<Name>Interface`, derives from QDBusAbstractInterface and holds no state:
///
///     ComTalvexDBusMediaPlayerMediaManagerInterface manager(service, path, connection);
///     auto reply = manager.GetActiveMediaSource();   // returns at once
///     reply.waitForFinished();                       // blocks this thread, D-Bus time-out applies
///     if (!reply.isError()) { MPL::ServiceObject source = reply.value(); }
///
/// Each D-Bus method is a slot that sends the call and returns a QDBusPendingReply without blocking;
/// each D-Bus signal is a Qt signal of the same name. A failure (no such service, object or method, or a
/// reply of another signature) is an error in the pending reply, never an exception and never a log line. A
/// proxy belongs to the thread that made it. Call MPL::RegisterAllMetaTypes() once before the first proxy.
#pragma once

#include <MPL_BrowserProxy.h>
#include <MPL_IndexerInfoProxy.h>
#include <MPL_MMEMountProxy.h>
#include <MPL_MediaInfoProxy.h>
#include <MPL_MediaManagerProxy.h>
#include <MPL_MediaSourceFactorySimulationProxy.h>
#include <MPL_MediaSourceProxy.h>
#include <MPL_PlayQueueProxy.h>
#include <MPL_PlaybackControlProxy.h>
