/// benchmark_service as a child of the benchmark, for as long as the object lives.
#pragma once

#include <QProcess>

namespace benchmarks
{

inline const QString kServiceName = QStringLiteral("com.talvex.Benchmark");

class ServiceProcess
{
public:
    /// Returns once the service owns its name; ends the program, with a line, when it never does.
    ServiceProcess(int aObjects, int aElements);
    ~ServiceProcess();
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;

private:
    QProcess m_Process;
};

} // namespace benchmarks
