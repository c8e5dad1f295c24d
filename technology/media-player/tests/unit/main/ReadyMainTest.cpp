// The ready main as its users meet it: output and exit code of a program that is built on it.
#include "PrivateBus.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace
{

// The sandbox promises a stack, whether or not a private bus runs in it.
enum class Where { Sandbox, SandboxWithoutBus, Nowhere, BesideABus };

struct ProgramRun {
    const char* what;
    QStringList arguments;
    Where where;
    int exitCode;
    // "!text" must not appear, "text" must appear exactly once.
    QStringList output;
};

QStringList Words(const char* aText)
{
    return QString::fromLatin1(aText).split(QLatin1Char('|'));
}

const char* const kNoBusTouched = "!Attempting to connect";

TEST(ReadyMain, ExitCodeAndOutputTellWhatHappened)
{
    const MPL::Doubles::PrivateBus bus;
    ASSERT_FALSE(bus.Address().isEmpty());
    const QString passing = QStringLiteral("--gtest_filter=*.Passes");
    const ProgramRun runs[] = {
        {"private bus by default",
         {passing},
         Where::Sandbox,
         0,
         Words("bus: MPLTestDbus|[  PASSED  ] 1 test")},
        {"failing suite",
         {},
         Where::Sandbox,
         1,
         Words("on purpose|  g_ret\n|Which is: 1|[       OK ] Subject.Passes")},
        {"no bus",
         {passing},
         Where::SandboxWithoutBus,
         1,
         Words("test bus can't be started|--system-bus|!\nbus: ")},
        {"options",
         {QStringLiteral("mine"), QStringLiteral("--system-bus"), passing, QStringLiteral("--"),
          QStringLiteral("--mine")},
         Where::Nowhere,
         0,
         Words("bus: qt_default_system_bus|arguments: mine --gtest_filter=*.Passes --mine|!Attempting to "
               "connect")},
        {"misspelt option",
         {QStringLiteral("--system-buss"), passing},
         Where::Sandbox,
         2,
         Words("unknown option --system-buss. The options are --system-bus, --sandbox|![ RUN")},
        {"sandbox in the sandbox",
         {QStringLiteral("--sandbox"), passing},
         Where::Sandbox,
         0,
         Words("bus: MPLTestDbus")},
        {"nothing to test",
         {passing},
         Where::Nowhere,
         1,
         Words("no media-player stack|this is no sandbox.\nRun it in the sandbox: |--sandbox\n|![ RUN")},
        {"only a test bus", {passing}, Where::BesideABus, 0, Words("bus: MPLTestDbus")},
        {"list",
         {QStringLiteral("--gtest_list_tests")},
         Where::Nowhere,
         0,
         {QStringLiteral("Passes"), kNoBusTouched}},
        {"help", {QStringLiteral("-h")}, Where::Nowhere, 0, Words("--system-bus|--gtest_filter|![ RUN")},
        {"googletest's help",
         {QStringLiteral("--gtest_help")},
         Where::SandboxWithoutBus,
         0,
         {QStringLiteral("--system-bus"), kNoBusTouched}},
        {"mistyped option",
         {QStringLiteral("--gtest_filtr=*")},
         Where::SandboxWithoutBus,
         1,
         Words("No test was run|![ RUN")},
        {"nothing selected",
         {QStringLiteral("--gtest_filter=None")},
         Where::SandboxWithoutBus,
         0,
         {kNoBusTouched}},
    };
    for (const ProgramRun& run : runs) {
        SCOPED_TRACE(run.what);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const bool withBus = run.where == Where::Sandbox || run.where == Where::BesideABus;
        environment.insert(QStringLiteral("READY_MAIN_BUS"),
                           withBus ? bus.Address() : QStringLiteral("unix:path=/nonexistent/bus"));
        environment.insert(QStringLiteral("QT_LOGGING_TO_CONSOLE"), QStringLiteral("1"));
        environment.remove(QStringLiteral("MPL_SANDBOX"));
        if (run.where == Where::Sandbox || run.where == Where::SandboxWithoutBus) {
            environment.insert(QStringLiteral("MPL_SANDBOX"), QStringLiteral("1"));
        }
        for (const char* name : {"GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX", "GTEST_OUTPUT"}) {
            environment.remove(QLatin1String(name)); // they are for this program
        }
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(READY_MAIN_SUBJECT), run.arguments);
        ASSERT_TRUE(program.waitForFinished(20000)) << qPrintable(program.errorString());
        const QString output = QString::fromLocal8Bit(program.readAll());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), run.exitCode) << qPrintable(output);
        for (const QString& text : run.output) {
            if (text.startsWith(QLatin1Char('!'))) {
                EXPECT_FALSE(output.contains(text.mid(1))) << qPrintable(text) << " in\n"
                                                           << qPrintable(output);
            } else {
                EXPECT_TRUE(output.contains(text)) << qPrintable(text) << " not in\n" << qPrintable(output);
            }
        }
    }
}

TEST(ReadyMain, RunsItselfInTheSandboxWithItsOwnOptions)
{
    const QTemporaryDir folder;
    QFile sandbox(folder.filePath(QStringLiteral("mpl-sandbox")));
    const QStringList arguments{QStringLiteral("--sandbox"), QStringLiteral("--system-bus"),
                                QStringLiteral("--"), QStringLiteral("--mine")};
    const auto run = [&] {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("MPL_SANDBOX"));
        environment.insert(QStringLiteral("PATH"), folder.path());
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(READY_MAIN_SUBJECT), arguments);
        EXPECT_TRUE(program.waitForFinished(20000)) << qPrintable(program.errorString());
        return std::pair(program.exitCode(), program.readAll().toStdString());
    };
    const auto [missing, cure] = run();
    EXPECT_EQ(missing, 127);
    EXPECT_NE(cure.find("install the package mpl-test-support-host"), std::string::npos) << cure;

    ASSERT_TRUE(sandbox.open(QIODevice::WriteOnly));
    sandbox.write("#!/bin/sh\necho \"$@\"\nexit 5\n");
    sandbox.close();
    ASSERT_TRUE(sandbox.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    const auto [status, command] = run();
    EXPECT_EQ(status, 5);
    EXPECT_EQ(command, "-- " READY_MAIN_SUBJECT " --sandbox --system-bus -- --mine\n");
}

} // namespace
