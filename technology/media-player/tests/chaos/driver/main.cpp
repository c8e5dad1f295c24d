// Chaos from seeds: many runs at once, or one of them again.
#include "Campaign.h"
#include "Report.h"
#include "Trial.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QThread>

#include <cstdio>

namespace
{

using chaos::CampaignOptions;

constexpr int kBadUsage = 2;

struct Options {
    CampaignOptions campaign;
    QString kept;
    bool isOneRun = false;
    QString problem;
};

// A number of at least `aLeast` from an option; what is wrong goes to `aProblem`.
double Number(const QCommandLineParser& aParser, const char* aName, double aLeast, QString& aProblem)
{
    bool isNumber = false;
    const double number = aParser.value(QLatin1String(aName)).toDouble(&isNumber);
    if (!isNumber || number < aLeast) {
        aProblem = QStringLiteral("--%1 needs a number from %2 on, not '%3'")
                       .arg(QLatin1String(aName))
                       .arg(aLeast)
                       .arg(aParser.value(QLatin1String(aName)));
    }
    return number;
}

// Whole, as it may be larger than what a floating-point number holds exactly.
quint64 Seed(const QCommandLineParser& aParser, QString& aProblem)
{
    bool isNumber = false;
    const QString text = aParser.value(QStringLiteral("seed"));
    const quint64 seed = text.toULongLong(&isNumber);
    if (!isNumber) {
        aProblem = QStringLiteral("--seed needs a whole number from 0 on, not '%1'").arg(text);
    }
    return seed;
}

void AddOptions(QCommandLineParser& aParser)
{
    aParser.setApplicationDescription(QStringLiteral(
        "Draws from each seed what goes wrong and what the library is asked to do, runs it in a sandbox,\n"
        "and checks what is promised whatever goes wrong."));
    aParser.addOption({QStringLiteral("runs"), QStringLiteral("how many seeds"), QStringLiteral("N"),
                       QStringLiteral("100")});
    aParser.addOption({QStringLiteral("seed"),
                       QStringLiteral("the first seed, or the only one without --runs"), QStringLiteral("S"),
                       QStringLiteral("1")});
    aParser.addOption({QStringLiteral("keep"), QStringLiteral("of the seed's schedule only these steps"),
                       QStringLiteral("3,7,…")});
    // So many at once keep a core busy: a run mostly waits.
    aParser.addOption({QStringLiteral("jobs"), QStringLiteral("how many runs at once"), QStringLiteral("N"),
                       QString::number(4 * QThread::idealThreadCount())});
    aParser.addOption({QStringLiteral("speed"), QStringLiteral("how many times as fast time passes, to 100"),
                       QStringLiteral("N"), QStringLiteral("20")});
    aParser.addHelpOption();
}

Options Read(const QCommandLineParser& aParser)
{
    Options options;
    options.campaign.runs = static_cast<int>(Number(aParser, "runs", 1, options.problem));
    options.campaign.firstSeed = Seed(aParser, options.problem);
    options.campaign.jobs = static_cast<int>(Number(aParser, "jobs", 1, options.problem));
    options.campaign.speed = Number(aParser, "speed", 1, options.problem);
    options.isOneRun = aParser.isSet(QStringLiteral("seed")) && !aParser.isSet(QStringLiteral("runs"));
    options.kept = aParser.value(QStringLiteral("keep"));
    if (!aParser.positionalArguments().isEmpty()) {
        options.problem =
            QStringLiteral("what is '%1'? see --help").arg(aParser.positionalArguments().constFirst());
    }
    if (!options.kept.isEmpty() && !options.isOneRun) {
        options.problem = QStringLiteral("--keep belongs to one --seed, without --runs");
    }
    return options;
}

int RunOne(const Options& aOptions)
{
    const quint64 seed = aOptions.campaign.firstSeed;
    const chaos::Schedule schedule = aOptions.kept.isEmpty()
                                         ? chaos::DrawSchedule(seed)
                                         : chaos::FromText(QString::number(seed), aOptions.kept);
    if (schedule.steps.isEmpty()) {
        std::fprintf(stderr, "--keep needs numbers of the seed's steps, such as 2,5, not '%s'\n",
                     qPrintable(aOptions.kept));
        return kBadUsage;
    }
    const chaos::Observations seen = chaos::Try(schedule, aOptions.campaign.speed);
    const chaos::Breaches breaches = chaos::Judge(schedule, seen);
    chaos::Tell(schedule, seen, breaches);
    return breaches.isEmpty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    AddOptions(parser);
    parser.process(application);
    const Options options = Read(parser);
    if (!options.problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(options.problem));
        return kBadUsage;
    }
    if (options.isOneRun) {
        return RunOne(options);
    }
    return chaos::Campaign(options.campaign).Run() == 0 ? 0 : 1;
}
