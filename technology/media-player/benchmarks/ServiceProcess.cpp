#include "ServiceProcess.h"

#include <QCoreApplication>

namespace benchmarks
{

ServiceProcess::ServiceProcess(int aObjects, int aElements)
{
    m_Process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_Process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/benchmark_service"),
                    {kServiceName, QString::number(aObjects), QString::number(aElements)});
    if (!m_Process.waitForReadyRead()) {
        qFatal("benchmark_service is not ready: %s", qPrintable(m_Process.errorString()));
    }
}

// The service ends with its input.
ServiceProcess::~ServiceProcess()
{
    m_Process.closeWriteChannel();
    m_Process.waitForFinished();
}

} // namespace benchmarks
