// What Qt 5 and Qt 6 do differently. Nothing else in the code asks which of them it is built with.
#pragma once

#include <QByteArray>
#include <QDBusMetaType>
#include <QDebug>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace MPL::Detail
{

// Starts a command, split at its blanks: see "Kept on purpose" in docs/architecture.md.
inline bool StartCommandDetached(const QString& aCommand)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    // Its startDetached() takes the text for the name of a program.
    QStringList arguments = QProcess::splitCommand(aCommand);
    const QString program = arguments.isEmpty() ? QString() : arguments.takeFirst();
    return QProcess::startDetached(program, arguments);
#else
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return QProcess::startDetached(aCommand);
    QT_WARNING_POP
#endif
}

// The D-Bus signature of a type, which Qt 5 knows by its number and Qt 6 by an object.
inline const char* SignatureOfType(int aType)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QDBusMetaType::typeToSignature(QMetaType(aType));
#else
    return QDBusMetaType::typeToSignature(aType);
#endif
}

// A list as Qt 5 writes it to the log: Qt 6 puts its type in front.
inline QByteArray LogText(const QStringList& aList)
{
    QString text;
    QDebug(&text).nospace() << aList;
    return text.mid(text.indexOf(QLatin1Char('('))).toUtf8();
}

} // namespace MPL::Detail
