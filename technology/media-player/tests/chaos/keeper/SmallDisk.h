/// A disk that can be filled without harm to others.
#pragma once

namespace chaos
{

/// Puts a small disk under /var/talvex, for this process and those that it starts. To be called before the
/// process has threads. False, with a message, when this user may not.
bool MakeSmallDisk();

} // namespace chaos
