/// The command line of a simulated program.
///
///     sim::Options options;
///     options.Flag("--verbose", "log every call").Value("DB=", "FILE", "keep the active source there");
///     if (const auto status = options.Parse(argc, argv)) { return *status; }
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace sim
{

class Options
{
public:
    /// Exit status of a program whose command line or faults file is wrong.
    static constexpr int kUsageError = 2;

    /// An option without a value.
    Options& Flag(const char* aName, const char* aHelp);
    /// An option whose value follows in the same argument: `aPrefix` "--port=" takes "--port=80".
    Options& Value(const char* aPrefix, const char* aPlaceholder, const char* aHelp);
    /// The same for a port number, 1 to 65535.
    Options& Port(const char* aPrefix, const char* aHelp);
    /// A word that, if given, stands first and whose value is the next argument.
    Options& LeadingWord(const char* aWord, const char* aPlaceholder, const char* aHelp);
    /// A number from 0 to `aMaximum` that must stand first.
    Options& LeadingNumber(const char* aPlaceholder, uint aMaximum, const char* aHelp);

    /// Returns nothing when the program is to go on. Otherwise the exit status: 0 after --help has printed
    /// the usage, kUsageError after a wrong argument has been named on standard error with the usage.
    std::optional<int> Parse(int argc, char** argv);

    bool Has(const char* aName) const;
    /// Empty when the option was not given.
    QString Get(const char* aName) const;
    uint Number() const { return m_Number; }

private:
    enum class Kind { Flag, Value, Port, LeadingWord, LeadingNumber };
    struct Option {
        Kind kind;
        QString name;
        QString placeholder;
        QString help;
        uint maximum;
        bool given;
        QString value;
    };

    Options& Add(Kind aKind, const char* aName, const char* aPlaceholder, const char* aHelp,
                 uint aMaximum = 0);
    QString TakeAll(QStringList aRguments);
    QString TakeLeading(QStringList& aRguments);
    QString Take(const QString& aRgument);
    QString Usage() const;
    const Option* Find(const char* aName) const;

    QVector<Option> m_Options;
    uint m_Number = 0;
};

} // namespace sim
