// The file that asks the simulated stack for faults.
#include "Fuzzing.h"
#include "framework/Faults.h"

#include <sys/mman.h>
#include <unistd.h>

namespace
{

// In memory, as a program's own descriptors are files as well.
class FaultsFile
{
public:
    explicit FaultsFile(const QByteArray& aText)
    {
        fuzz::Promise(write(m_Fd, aText.constData(), static_cast<size_t>(aText.size())) == aText.size(),
                      "memory can be written");
    }
    ~FaultsFile() { close(m_Fd); }

    QString Path() const { return "/proc/self/fd/" + QString::number(m_Fd); }

private:
    Q_DISABLE_COPY(FaultsFile)

    int m_Fd = memfd_create("faults", MFD_CLOEXEC);
};

} // namespace

// Qt's reader of JSON loses some of what is in a broken text.
extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libQt5Core";
}

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    const FaultsFile file(fuzz::ToBytes(aData, aSize));
    sim::FaultPlan plan;
    QString error;
    const bool loaded = sim::FaultPlan::Load(file.Path(), "media_manager", plan, error);
    fuzz::Promise(loaded == error.isEmpty(), "a refusal says why, and nothing else does");
    const bool inRange =
        plan.startDelayMs >= 0 && plan.managerObjects >= 0 && plan.crashAfterMs.value_or(0) >= 0;
    fuzz::Promise(!loaded || inRange, "what is asked for is possible");
    return 0;
}
