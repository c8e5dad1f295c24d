/// The data manager behind DataManager.h, with the choice of the file open to tests.
#pragma once

#include <QString>

namespace MPL::Detail
{

/// What DataManager::StartUp() does, on the store at `aPath`. 0 on success; otherwise 1 and one log line.
/// A second start without a shut-down in between changes to the path given.
int StartUpDataManager(const QString& aPath);

} // namespace MPL::Detail
