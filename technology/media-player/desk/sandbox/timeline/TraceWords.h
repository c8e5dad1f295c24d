/// The words of a trace.
#pragma once

#include "../run/Run.h"

#include <string>

namespace sandbox
{

const char* WordOf(RunResult aResult);
const char* WordOf(LogLevel aLevel);

/// The program ended while the case was running.
bool HasDiedIn(const Run& aRun, const TestCase& aCase);

/// How something ended: "ok", "failed", "killed" …
const char* StateOf(const Run& aRun, const TestCase& aCase);
const char* StateOf(const ProcessLife& aProcess);
const char* StateOf(const Call& aCall);

/// Who has sent it the signal that it ended by; when it exited, the last who asked it to.
std::string KilledBy(const ProcessLife& aProcess);

/// "Interface.Member", without what comes before in the interface's name.
std::string MemberName(const std::string& aInterface, const std::string& aMember);

/// ISO 8601 with milliseconds.
std::string DateText(long long aNanoseconds);

/// As a number without decimals, or with three where they matter.
std::string Milliseconds(double aMilliseconds);

} // namespace sandbox
