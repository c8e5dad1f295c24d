/// The files that the library writes, or has written.
#pragma once

#include "Observations.h"

namespace chaos
{

/// Fills in what concerns the database, the test configuration and the environment directory.
void LookAtFiles(Moment& aMoment);

/// Whether the second file has the content of the first: "whole", "half" or "absent".
QString CompareCopy(const QString& aOriginal, const QString& aCopy);

} // namespace chaos
