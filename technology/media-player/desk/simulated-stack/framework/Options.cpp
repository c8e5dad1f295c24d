#include "Options.h"

#include "Log.h"

#include <cerrno>
#include <cstdio>

namespace sim
{
namespace
{

bool IsNumberUpTo(const QString& text, uint maximum, uint& number)
{
    bool ok = false;
    const uint read = text.toUInt(&ok);
    if (!ok || read > maximum || text.startsWith(QLatin1Char('+'))) {
        return false;
    }
    number = read;
    return true;
}

} // namespace

Options& Options::Flag(const char* name, const char* help)
{
    return Add(Kind::Flag, name, "", help);
}

Options& Options::Value(const char* prefix, const char* placeholder, const char* help)
{
    return Add(Kind::Value, prefix, placeholder, help);
}

Options& Options::Port(const char* prefix, const char* help)
{
    return Add(Kind::Port, prefix, "N", help, 65535);
}

Options& Options::LeadingWord(const char* word, const char* placeholder, const char* help)
{
    return Add(Kind::LeadingWord, word, placeholder, help);
}

Options& Options::LeadingNumber(const char* placeholder, uint maximum, const char* help)
{
    return Add(Kind::LeadingNumber, "", placeholder, help, maximum);
}

Options& Options::Add(Kind kind, const char* name, const char* placeholder, const char* help, uint maximum)
{
    m_Options.append({kind, QString::fromLatin1(name), QString::fromLatin1(placeholder),
                      QString::fromLatin1(help), maximum, false, QString()});
    return *this;
}

std::optional<int> Options::Parse(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    if (arguments.contains(QStringLiteral("--help"))) {
        std::printf("%s", qUtf8Printable(Usage()));
        return 0;
    }
    const QString error = TakeAll(arguments);
    if (error.isEmpty()) {
        return std::nullopt;
    }
    Log(error);
    std::fprintf(stderr, "%s", qUtf8Printable(Usage()));
    return kUsageError;
}

QString Options::TakeAll(QStringList arguments)
{
    QString error = TakeLeading(arguments);
    while (error.isEmpty() && !arguments.isEmpty()) {
        error = Take(arguments.takeFirst());
    }
    return error;
}

QString Options::TakeLeading(QStringList& arguments)
{
    for (Option& option : m_Options) {
        if (option.kind == Kind::LeadingNumber) {
            if (arguments.isEmpty() || !IsNumberUpTo(arguments.first(), option.maximum, m_Number)) {
                return QStringLiteral("the first argument must be %1, a number from 0 to %2")
                    .arg(option.placeholder)
                    .arg(option.maximum);
            }
            arguments.removeFirst();
        }
        if (option.kind == Kind::LeadingWord && !arguments.isEmpty() && arguments.first() == option.name) {
            arguments.removeFirst();
            if (arguments.isEmpty()) {
                return QStringLiteral("%1 must be followed by %2").arg(option.name, option.placeholder);
            }
            option.given = true;
            option.value = arguments.takeFirst();
        }
    }
    return QString();
}

QString Options::Take(const QString& argument)
{
    for (Option& option : m_Options) {
        if (option.kind == Kind::Flag && argument == option.name) {
            option.given = true;
            return QString();
        }
        if ((option.kind == Kind::Value || option.kind == Kind::Port) && argument.startsWith(option.name)) {
            option.given = true;
            option.value = argument.mid(option.name.size());
            uint port = 0;
            if (option.kind == Kind::Port &&
                (!IsNumberUpTo(option.value, option.maximum, port) || port == 0)) {
                return QStringLiteral("%1 needs a port number from 1 to 65535").arg(option.name);
            }
            return option.value.isEmpty() ? QStringLiteral("%1 needs a value").arg(option.name) : QString();
        }
    }
    return QStringLiteral("unknown option \"%1\"").arg(argument);
}

QString Options::Usage() const
{
    QString usage = QStringLiteral("Usage: %1 [option]…\n").arg(QLatin1String(program_invocation_short_name));
    for (const Option& option : m_Options) {
        const QString gap = option.kind == Kind::LeadingWord ? QStringLiteral(" ") : QString();
        usage +=
            QStringLiteral("  %1  %2\n").arg(option.name + gap + option.placeholder, -24).arg(option.help);
    }
    return usage + QStringLiteral("  %1  print this and exit\n").arg(QLatin1String("--help"), -24);
}

const Options::Option* Options::Find(const char* name) const
{
    for (const Option& option : m_Options) {
        if (option.name == QLatin1String(name)) {
            return &option;
        }
    }
    return nullptr;
}

bool Options::Has(const char* name) const
{
    const Option* option = Find(name);
    return option != nullptr && option->given;
}

QString Options::Get(const char* name) const
{
    const Option* option = Find(name);
    return option != nullptr ? option->value : QString();
}

} // namespace sim
