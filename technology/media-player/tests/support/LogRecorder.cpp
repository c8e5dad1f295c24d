#include "LogRecorder.h"

#include "Journal.h"

#include <cstring>

namespace MPL::Doubles
{

namespace
{

// In the order of QtMsgType.
constexpr const char* kLevels[] = {"debug", "warning", "critical", "fatal", "info"};

void Record(QtMsgType aType, const QMessageLogContext& aContext, const QString& aText)
{
    QString level = kLevels[aType];
    if (aContext.category != nullptr && std::strcmp(aContext.category, "default") != 0) {
        level += QStringLiteral(" [%1]").arg(QLatin1String(aContext.category));
    }
    Note(level + ": " + aText);
}

} // namespace

LogRecorder::LogRecorder() : m_Previous(qInstallMessageHandler(Record))
{
    ClearNotes();
}

LogRecorder::~LogRecorder()
{
    qInstallMessageHandler(m_Previous);
}

} // namespace MPL::Doubles
