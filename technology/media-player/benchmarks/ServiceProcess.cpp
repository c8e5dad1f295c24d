#include "ServiceProcess.h"

#include <QCoreApplication>

namespace benchmarks
{

QString ServiceProgram()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/benchmark_service");
}

ServiceProcess::ServiceProcess(int aObjects)
{
    m_Process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_Process.start(ServiceProgram(), {kServiceName, QString::number(aObjects)});
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
