/// Where the lifecycle manager tells how its services ended.
#pragma once

namespace sandbox
{

/// A datagram "pid code status" for each, as waitid has them.
constexpr const char* kEndsSocket = "/run/mpl-sandbox/ends";

/// Another datagram: somebody enters the sandbox, who may want to trace what runs there.
constexpr const char* kSomebodyComes = "somebody comes";

} // namespace sandbox
