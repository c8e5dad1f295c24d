/// The stack's names on a bus, asked without Qt, whose connections may be what hangs.
#pragma once

#include <QByteArray>
#include <QStringList>

namespace chaos
{

inline const QByteArray kTestBus = "unix:path=/var/talvex/media-player/testDbus";

struct BusSeen {
    bool answers = false;
    QStringList names;
};

/// Waits for a bus that hangs, but not for ever.
BusSeen AskBus(const QByteArray& aAddress);

} // namespace chaos
