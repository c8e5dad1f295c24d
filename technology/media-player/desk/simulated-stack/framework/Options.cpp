#include "Options.h"

#include "Log.h"

#include <QCoreApplication>

#include <cstdio>

namespace sim
{
namespace
{

bool IsPort(const QString& aText)
{
    const uint port = aText.toUInt(); // 0 for what is no number
    return port >= 1 && port <= 65535 && !aText.startsWith(QLatin1Char('+'));
}

} // namespace

Options::Options()
{
    m_Parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions); // -default_playqueue
    m_Parser.addOption({QStringLiteral("help"), QStringLiteral("print this and exit")});
}

void Options::Flag(const char* aName, const char* aHelp)
{
    m_Parser.addOption({QString::fromLatin1(aName), QString::fromLatin1(aHelp)});
}

void Options::Value(const char* aName, const char* aPlaceholder, const char* aHelp)
{
    m_Parser.addOption(
        {QString::fromLatin1(aName), QString::fromLatin1(aHelp), QString::fromLatin1(aPlaceholder)});
    m_Valued.append(QString::fromLatin1(aName));
}

void Options::Port(const char* aName, const char* aHelp)
{
    Value(aName, "N", aHelp);
    m_Ports.append(QString::fromLatin1(aName));
}

void Options::Words(const char* aSyntax, const char* aExpression, const char* aHelp)
{
    m_Syntax = QString::fromLatin1(aSyntax);
    m_Expression.setPattern(QRegularExpression::anchoredPattern(QString::fromLatin1(aExpression)));
    m_Parser.addPositionalArgument(m_Syntax, QString::fromLatin1(aHelp));
}

std::optional<int> Options::Parse(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    const QString error = Take(arguments);
    const bool help = m_Parser.isSet(QStringLiteral("help"));
    if (error.isEmpty() && !help) {
        return std::nullopt;
    }
    if (!help) {
        Log(error);
    }
    const QCoreApplication named(argc, argv); // the usage begins with its name
    std::fprintf(help ? stdout : stderr, "%s", qUtf8Printable(m_Parser.helpText()));
    return help ? 0 : kUsageError;
}

// Returns what is wrong.
QString Options::Take(const QStringList& aArguments)
{
    if (!m_Parser.parse(aArguments)) {
        return m_Parser.errorText();
    }
    QString error = TakeWords(m_Parser.positionalArguments().join(QLatin1Char(' ')));
    const QStringList names = m_Parser.optionNames();
    for (const QString& name : names) {
        error = error.isEmpty() ? TakeOption(name, m_Parser.value(name)) : error;
    }
    return error;
}

QString Options::TakeWords(const QString& aWords)
{
    const QRegularExpressionMatch match = m_Expression.match(aWords);
    m_Word = match.captured(1);
    return match.hasMatch() ? QString()
                            : QStringLiteral("\"%1\" does not fit: expected %2").arg(aWords, m_Syntax);
}

QString Options::TakeOption(const QString& aName, const QString& aValue)
{
    m_Values.insert(aName, aValue);
    if (m_Ports.contains(aName) && !IsPort(aValue)) {
        return QStringLiteral("--%1= needs a port number from 1 to 65535").arg(aName);
    }
    return m_Valued.contains(aName) && aValue.isEmpty() ? QStringLiteral("--%1= needs a value").arg(aName)
                                                        : QString();
}

} // namespace sim
