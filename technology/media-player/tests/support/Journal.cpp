#include "Journal.h"

#include <QMutex>
#include <QRegularExpression>

namespace MPL::Doubles
{

namespace
{
QMutex s_Mutex;
QStringList s_Notes;
} // namespace

void Note(const QString& aLine)
{
    QMutexLocker lock(&s_Mutex);
    s_Notes << aLine;
}

QStringList Notes(const QString& aPrefix)
{
    QMutexLocker lock(&s_Mutex);
    return s_Notes.filter(QRegularExpression('^' + QRegularExpression::escape(aPrefix)));
}

void ClearNotes()
{
    QMutexLocker lock(&s_Mutex);
    s_Notes.clear();
}

std::string Text(const QStringList& aLines)
{
    return aLines.join('\n').toStdString();
}

} // namespace MPL::Doubles
