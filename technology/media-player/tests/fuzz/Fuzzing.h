/// What the fuzz targets share.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

/// Each target defines this one. libFuzzer calls it with whatever it thinks of, Replay.cpp with the corpus.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize);

namespace fuzz
{

/// Ends the program, which is a finding, unless it holds.
void Promise(bool aHolds, const char* aWhat);

/// From now on the log is put together as ever, and thrown away.
void SilenceLog();

inline QByteArray ToBytes(const uint8_t* aData, size_t aSize)
{
    return {reinterpret_cast<const char*>(aData), static_cast<int>(aSize)};
}

inline QString ToText(const uint8_t* aData, size_t aSize)
{
    return QString::fromUtf8(ToBytes(aData, aSize));
}

} // namespace fuzz
