#include "LogRecorder.h"

#include "Journal.h"

#include <cstring>

namespace MPL::Doubles
{

namespace
{

QString Level(QtMsgType type)
{
    switch (type) {
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

void Record(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    QString level = Level(type);
    if (context.category != nullptr && std::strcmp(context.category, "default") != 0) {
        level += QStringLiteral(" [%1]").arg(QLatin1String(context.category));
    }
    Note(level + QStringLiteral(": ") + text);
}

} // namespace

LogRecorder::LogRecorder() : m_Previous(qInstallMessageHandler(Record)) {}

LogRecorder::~LogRecorder()
{
    qInstallMessageHandler(m_Previous);
}

} // namespace MPL::Doubles
