// Calls of a service: through the generated proxies, through Qt D-Bus without them, sd-bus and sdbus-c++; one
// at a time, and many in flight.
#include "ServiceProcess.h"
#include <MPL_Proxies.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>

#include <benchmark/benchmark.h>
#include <systemd/sd-bus.h>

#include <sdbus-c++/sdbus-c++.h>

#include <future>
#include <memory>
#include <string>
#include <vector>

namespace
{

using namespace benchmarks;

using Proxy = ComTalvexDBusMediaPlayerMediaSourceInterface;

const QString kPath = QStringLiteral("/");
constexpr const char* kInterface = "com.talvex.DBus.MediaPlayer.MediaSource";
constexpr const char* kMethod = "GetSourceName";

void Offer()
{
    static const ServiceProcess kService(0);
}

void OurProxy(benchmark::State& aState)
{
    Offer();
    Proxy proxy(kServiceName, kPath, QDBusConnection::sessionBus());
    std::vector<QDBusPendingReply<QString>> replies(static_cast<std::size_t>(aState.range(0)));
    while (aState.KeepRunning()) {
        for (auto& reply : replies) {
            reply = proxy.GetSourceName();
        }
        for (auto& reply : replies) {
            reply.waitForFinished();
            if (reply.value().isEmpty()) {
                aState.SkipWithError("no answer");
            }
        }
    }
}

void RawQt(benchmark::State& aState)
{
    Offer();
    QDBusConnection bus = QDBusConnection::sessionBus();
    std::vector<QDBusPendingReply<QString>> replies(static_cast<std::size_t>(aState.range(0)));
    while (aState.KeepRunning()) {
        for (auto& reply : replies) {
            reply = bus.asyncCall(QDBusMessage::createMethodCall(
                kServiceName, kPath, QLatin1String(kInterface), QLatin1String(kMethod)));
        }
        for (auto& reply : replies) {
            reply.waitForFinished();
            if (reply.value().isEmpty()) {
                aState.SkipWithError("no answer");
            }
        }
    }
}

struct Unref {
    void operator()(sd_bus* aBus) const { sd_bus_flush_close_unref(aBus); }
};

int CountReply(sd_bus_message* aReply, void* aCount, sd_bus_error* /*error*/)
{
    const char* name = nullptr;
    *static_cast<std::int64_t*>(aCount) += sd_bus_message_read(aReply, "s", &name) > 0 ? 1 : 0;
    return 0;
}

void SdBus(benchmark::State& aState)
{
    Offer();
    sd_bus* opened = nullptr;
    sd_bus_open_user(&opened);
    const std::unique_ptr<sd_bus, Unref> bus(opened);
    const std::string service = kServiceName.toStdString();
    while (aState.KeepRunning()) {
        std::int64_t answers = 0;
        for (std::int64_t i = 0; i < aState.range(0); ++i) {
            sd_bus_call_method_async(bus.get(), nullptr, service.c_str(), "/", kInterface, kMethod,
                                     &CountReply, &answers, nullptr);
        }
        while (answers < aState.range(0)) {
            if (sd_bus_process(bus.get(), nullptr) == 0) {
                sd_bus_wait(bus.get(), UINT64_MAX);
            }
        }
    }
}

void SdbusCpp(benchmark::State& aState)
{
    Offer();
    auto proxy = sdbus::createProxy(sdbus::createSessionBusConnection(), kServiceName.toStdString(), "/");
    while (aState.KeepRunning()) {
        std::promise<void> done;
        std::int64_t answers = 0;
        for (std::int64_t i = 0; i < aState.range(0); ++i) {
            proxy->callMethodAsync(kMethod)
                .onInterface(kInterface)
                .uponReplyInvoke([&](const sdbus::Error* /*error*/, const std::string& /*name*/) {
                    if (++answers == aState.range(0)) {
                        done.set_value();
                    }
                });
        }
        done.get_future().wait();
    }
}

void InFlight(benchmark::internal::Benchmark* aBenchmark)
{
    aBenchmark->Unit(benchmark::kMicrosecond)->UseRealTime()->RangeMultiplier(10)->Range(1, 1000);
}

BENCHMARK(OurProxy)->Name("Calls/ours")->Apply(InFlight);
BENCHMARK(RawQt)->Name("Calls/Qt D-Bus")->Apply(InFlight);
BENCHMARK(SdBus)->Name("Calls/sd-bus")->Apply(InFlight);
BENCHMARK(SdbusCpp)->Name("Calls/sdbus-c++")->Apply(InFlight);

} // namespace
