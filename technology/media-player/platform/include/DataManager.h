/// @file
/// Life cycle of the data-manager library, which keeps what the media player remembers between runs.
/// Declared here, implemented by the platform.
#pragma once

namespace DataManager
{

/// Opens the store. Returns 0 on success, otherwise an error number of the platform. Blocks for file access.
int StartUp();

/// Closes the store; harmless when it is not open.
void ShutDown();

} // namespace DataManager
