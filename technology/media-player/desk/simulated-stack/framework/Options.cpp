#include "Options.h"

#include "Log.h"

#include <cerrno>
#include <cstdio>

namespace sim
{
namespace
{

bool IsNumberUpTo(const QString& aText, uint aMaximum, uint& aNumber)
{
    bool ok = false;
    const uint read = aText.toUInt(&ok);
    if (!ok || read > aMaximum || aText.startsWith(QLatin1Char('+'))) {
        return false;
    }
    aNumber = read;
    return true;
}

} // namespace

Options& Options::Flag(const char* aName, const char* aHelp)
{
    return Add(Kind::Flag, aName, "", aHelp);
}

Options& Options::Value(const char* aPrefix, const char* aPlaceholder, const char* aHelp)
{
    return Add(Kind::Value, aPrefix, aPlaceholder, aHelp);
}

Options& Options::Port(const char* aPrefix, const char* aHelp)
{
    return Add(Kind::Port, aPrefix, "N", aHelp, 65535);
}

Options& Options::LeadingWord(const char* aWord, const char* aPlaceholder, const char* aHelp)
{
    return Add(Kind::LeadingWord, aWord, aPlaceholder, aHelp);
}

Options& Options::LeadingNumber(const char* aPlaceholder, uint aMaximum, const char* aHelp)
{
    return Add(Kind::LeadingNumber, "", aPlaceholder, aHelp, aMaximum);
}

Options& Options::Add(Kind aKind, const char* aName, const char* aPlaceholder, const char* aHelp,
                      uint aMaximum)
{
    m_Options.append({aKind, QString::fromLatin1(aName), QString::fromLatin1(aPlaceholder),
                      QString::fromLatin1(aHelp), aMaximum, false, QString()});
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

QString Options::TakeAll(QStringList aRguments)
{
    QString error = TakeLeading(aRguments);
    while (error.isEmpty() && !aRguments.isEmpty()) {
        error = Take(aRguments.takeFirst());
    }
    return error;
}

QString Options::TakeLeading(QStringList& aRguments)
{
    for (Option& option : m_Options) {
        if (option.kind == Kind::LeadingNumber) {
            if (aRguments.isEmpty() || !IsNumberUpTo(aRguments.first(), option.maximum, m_Number)) {
                return QStringLiteral("the first argument must be %1, a number from 0 to %2")
                    .arg(option.placeholder)
                    .arg(option.maximum);
            }
            aRguments.removeFirst();
        }
        if (option.kind == Kind::LeadingWord && !aRguments.isEmpty() && aRguments.first() == option.name) {
            aRguments.removeFirst();
            if (aRguments.isEmpty()) {
                return QStringLiteral("%1 must be followed by %2").arg(option.name, option.placeholder);
            }
            option.given = true;
            option.value = aRguments.takeFirst();
        }
    }
    return QString();
}

QString Options::Take(const QString& aRgument)
{
    for (Option& option : m_Options) {
        if (option.kind == Kind::Flag && aRgument == option.name) {
            option.given = true;
            return QString();
        }
        if ((option.kind == Kind::Value || option.kind == Kind::Port) && aRgument.startsWith(option.name)) {
            option.given = true;
            option.value = aRgument.mid(option.name.size());
            uint port = 0;
            if (option.kind == Kind::Port &&
                (!IsNumberUpTo(option.value, option.maximum, port) || port == 0)) {
                return QStringLiteral("%1 needs a port number from 1 to 65535").arg(option.name);
            }
            return option.value.isEmpty() ? QStringLiteral("%1 needs a value").arg(option.name) : QString();
        }
    }
    return QStringLiteral("unknown option \"%1\"").arg(aRgument);
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

const Options::Option* Options::Find(const char* aName) const
{
    for (const Option& option : m_Options) {
        if (option.name == QLatin1String(aName)) {
            return &option;
        }
    }
    return nullptr;
}

bool Options::Has(const char* aName) const
{
    const Option* option = Find(aName);
    return option != nullptr && option->given;
}

QString Options::Get(const char* aName) const
{
    const Option* option = Find(aName);
    return option != nullptr ? option->value : QString();
}

} // namespace sim
