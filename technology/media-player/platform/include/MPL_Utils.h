/// @file
/// Whole-file reads and writes. Declared here, implemented by the platform.
#pragma once

#include <QString>

namespace MPL
{

/// Reads and writes whole text files.
class MplUtils
{
public:
    /// Reads the whole file as UTF-8 text into `aText`. On failure returns false and leaves `aText` as it
    /// was.
    static bool ReadFile(const QString& aPath, QString& aText);

    /// Replaces the file's content by `aText` as UTF-8. On failure returns false and the old file is whole.
    static bool WriteFile(const QString& aPath, const QString& aText);
};

} // namespace MPL
