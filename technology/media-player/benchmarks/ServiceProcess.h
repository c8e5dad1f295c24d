/// benchmark_service as a child of the benchmark, for as long as the object lives.
#pragma once

#include <QProcess>

namespace benchmarks
{

inline const QString kServiceName = QStringLiteral("com.talvex.Benchmark");
inline const QString kSourceInterface = QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource");

/// Path of benchmark_service, beside this program.
QString ServiceProgram();

class ServiceProcess
{
public:
    /// Returns once the service owns its name; ends the program, with a line, when it never does.
    explicit ServiceProcess(int aObjects);
    ~ServiceProcess();
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;

private:
    QProcess m_Process;
};

} // namespace benchmarks
