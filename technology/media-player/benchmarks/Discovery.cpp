// All objects of a service that have an interface: ours, the same look-ups one after the other, and busctl.
#include "Discovery.h"

#include "IntrospectionText.h"
#include "ServiceProcess.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{

using namespace benchmarks;

// All benchmarks of one size share a service; they come in any order.
void Offer(int aObjects)
{
    static std::unique_ptr<ServiceProcess> s_Service;
    static int s_Objects = -1;
    if (s_Objects != aObjects) {
        s_Service.reset();
        s_Service = std::make_unique<ServiceProcess>(aObjects);
        s_Objects = aObjects;
    }
}

// Of every eleven objects ten are sources.
int SourcesAmong(int aObjects)
{
    return aObjects - (aObjects + 10) / 11;
}

void Ours(benchmark::State& aState)
{
    const int objects = static_cast<int>(aState.range(0));
    Offer(objects);
    MPL::Detail::DiscoveryLimits limits;
    limits.objects = objects + 1;
    limits.time = std::chrono::minutes(1);
    QStringList paths;
    while (aState.KeepRunning()) {
        MPL::Detail::FindObjects(kServiceName, kSourceInterface, QDBusConnection::sessionBus(), limits,
                                 paths);
    }
    if (paths.size() != SourcesAmong(objects)) {
        aState.SkipWithError("not all objects were found");
    }
}

void Look(const QString& aPath, QStringList& aFound)
{
    const QDBusMessage call = QDBusMessage::createMethodCall(
        kServiceName, aPath, QStringLiteral("org.freedesktop.DBus.Introspectable"),
        QStringLiteral("Introspect"));
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call);
    const auto node = MPL::Detail::ReadIntrospection(reply.arguments().value(0).toString());
    if (node && node->interfaces.contains(kSourceInterface)) {
        aFound << aPath;
    }
    for (const QString& child : node ? node->children : QStringList()) {
        Look((aPath == QLatin1String("/") ? QString() : aPath) + QLatin1Char('/') + child, aFound);
    }
}

void Serial(benchmark::State& aState)
{
    Offer(static_cast<int>(aState.range(0)));
    QStringList found;
    while (aState.KeepRunning()) {
        found.clear();
        Look(QStringLiteral("/"), found);
    }
    if (found.size() != SourcesAmong(static_cast<int>(aState.range(0)))) {
        aState.SkipWithError("not all objects were found");
    }
}

void Busctl(benchmark::State& aState)
{
    Offer(static_cast<int>(aState.range(0)));
    while (aState.KeepRunning()) {
        QProcess busctl;
        busctl.start(QStringLiteral("busctl"), {QStringLiteral("--user"), QStringLiteral("--list"),
                                                QStringLiteral("tree"), kServiceName});
        busctl.waitForFinished();
        if (busctl.exitCode() != 0) {
            aState.SkipWithError(busctl.readAllStandardError().constData());
        }
    }
}

void Sizes(benchmark::internal::Benchmark* aBenchmark)
{
    aBenchmark->Unit(benchmark::kMillisecond)->UseRealTime()->RangeMultiplier(10);
    for (const int objects : {10, 100, 1100, 10000}) {
        aBenchmark->Arg(objects);
    }
}

BENCHMARK(Ours)->Name("Discovery/ours")->Apply(Sizes);
BENCHMARK(Serial)->Name("Discovery/one after the other")->Apply(Sizes);
BENCHMARK(Busctl)->Name("Discovery/busctl tree")->Apply(Sizes);

} // namespace
