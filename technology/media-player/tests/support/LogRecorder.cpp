#include "LogRecorder.h"

#include "Journal.h"

#include <cstring>

namespace MPL::Doubles
{

namespace
{

QString Level(QtMsgType aType)
{
    switch (aType) {
    case QtDebugMsg:
        return QStringLiteral("debug");
    case QtInfoMsg:
        return QStringLiteral("info");
    case QtWarningMsg:
        return QStringLiteral("warning");
    case QtCriticalMsg:
        return QStringLiteral("critical");
    case QtFatalMsg:
        break;
    }
    return QStringLiteral("fatal");
}

void Record(QtMsgType aType, const QMessageLogContext& aContext, const QString& aText)
{
    QString level = Level(aType);
    if (aContext.category != nullptr && std::strcmp(aContext.category, "default") != 0) {
        level += QStringLiteral(" [%1]").arg(QLatin1String(aContext.category));
    }
    Note(level + QStringLiteral(": ") + aText);
}

} // namespace

LogRecorder::LogRecorder() : m_Previous(qInstallMessageHandler(Record)) {}

LogRecorder::~LogRecorder()
{
    qInstallMessageHandler(m_Previous);
}

} // namespace MPL::Doubles
