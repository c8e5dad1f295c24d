/// The command line of a simulated program.
///
///     sim::Options options;
///     options.Flag("verbose", "log every call");
///     options.Words("[DB=FILE]", "(?:DB=(.+))?", "keep the active source in this database");
///     if (const auto status = options.Parse(argc, argv)) { return *status; }
#pragma once

#include <QCommandLineParser>
#include <QHash>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <optional>

namespace sim
{

class Options
{
public:
    /// Exit status of a program whose command line or faults file is wrong.
    static constexpr int kUsageError = 2;

    Options();

    /// An option without a value: "--verbose".
    void Flag(const char* aName, const char* aHelp);
    /// An option with a value: "--remote=10.0.0.1".
    void Value(const char* aName, const char* aPlaceholder, const char* aHelp);
    /// The same for a port number, 1 to 65535.
    void Port(const char* aName, const char* aHelp);
    /// What the program takes besides options: all arguments without dashes, with a blank between them, must
    /// match the expression as a whole. Without this call there may be none.
    void Words(const char* aSyntax, const char* aExpression, const char* aHelp);

    /// Returns nothing when the program is to go on. Otherwise the exit status: 0 after --help has printed
    /// the usage, kUsageError after a wrong argument has been named on standard error with the usage.
    std::optional<int> Parse(int argc, char** argv);

    bool Has(const char* aName) const { return m_Values.contains(QLatin1String(aName)); }
    /// Empty when the option was not given.
    QString Get(const char* aName) const { return m_Values.value(QLatin1String(aName)); }
    /// What the words' expression has captured.
    QString Word() const { return m_Word; }

private:
    QString Take(const QStringList& aArguments);
    QString TakeWords(const QString& aWords);
    QString TakeOption(const QString& aName, const QString& aValue);

    QCommandLineParser m_Parser;
    QStringList m_Valued; // the options that need a value
    QStringList m_Ports;
    QString m_Syntax = QStringLiteral("options only");
    QRegularExpression m_Expression{QStringLiteral("\\A\\z")};
    QHash<QString, QString> m_Values;
    QString m_Word;
};

} // namespace sim
