// The ready main as its users meet it: output and exit code of a program that is built on it.
#include "PrivateBus.h"

#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

// The sandbox promises a stack, whether or not a private bus runs in it.
enum class Where { Sandbox, SandboxWithoutBus, Nowhere, BesideABus };

struct ProgramRun {
    const char* what;
    QStringList arguments;
    Where where;
    int exitCode;
    // Separated by bars: "!text" must not appear, "text" must.
    const char* output;
};

const QString kPassing = "--gtest_filter=*.Passes";
const ProgramRun kRuns[] = {
    {"PrivateBusByDefault", {kPassing}, Where::Sandbox, 0, "bus: MPLTestDbus|[  PASSED  ] 1 test"},
    {"FailingSuite", {}, Where::Sandbox, 1, "on purpose|  g_ret\n|Which is: 1|[       OK ] Subject.Passes"},
    {"NoBus", {kPassing}, Where::SandboxWithoutBus, 1, "test bus can't be started|--system-bus|!\nbus: "},
    {"Options",
     {"mine", "--system-bus", kPassing, "--", "--mine"},
     Where::Nowhere,
     0,
     "bus: qt_default_system_bus|arguments: mine --gtest_filter=*.Passes --mine|!Attempting to connect"},
    {"MisspeltOption",
     {"--system-buss", kPassing},
     Where::Sandbox,
     2,
     "unknown option --system-buss. The options are --system-bus, --sandbox|![ RUN"},
    {"SandboxInTheSandbox", {"--sandbox", kPassing}, Where::Sandbox, 0, "bus: MPLTestDbus"},
    {"NothingToTest",
     {kPassing},
     Where::Nowhere,
     1,
     "no media-player stack|this is no sandbox.\nRun it in the sandbox: |--sandbox\n|![ RUN"},
    {"OnlyATestBus", {kPassing}, Where::BesideABus, 0, "bus: MPLTestDbus"},
    {"List", {"--gtest_list_tests"}, Where::Nowhere, 0, "Passes|!Attempting to connect"},
    {"Help", {"-h"}, Where::Nowhere, 0, "--system-bus|--gtest_filter|![ RUN"},
    {"GoogletestsHelp", {"--gtest_help"}, Where::SandboxWithoutBus, 0, "--system-bus|!Attempting to connect"},
    {"MistypedOption", {"--gtest_filtr=*"}, Where::SandboxWithoutBus, 1, "No test was run|![ RUN"},
    {"NothingSelected", {"--gtest_filter=None"}, Where::SandboxWithoutBus, 0, "!Attempting to connect"},
};

// What the program printed; its exit code is in `aExitCode`.
std::string RunSubject(const QStringList& aArguments, const QMap<QString, QString>& aVariables,
                       int& aExitCode)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX", "GTEST_OUTPUT", "MPL_SANDBOX"}) {
        environment.remove(name); // they are for this program
    }
    for (auto variable = aVariables.begin(); variable != aVariables.end(); ++variable) {
        environment.insert(variable.key(), *variable);
    }
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(READY_MAIN_SUBJECT, aArguments);
    EXPECT_TRUE(program.waitForFinished(20000)) << qPrintable(program.errorString());
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    aExitCode = program.exitCode();
    return program.readAll().toStdString();
}

class ReadyMain : public testing::TestWithParam<ProgramRun>
{
};

TEST_P(ReadyMain, TellsByExitCodeAndOutputWhatHappened)
{
    const Where where = GetParam().where;
    QMap<QString, QString> variables{{"QT_LOGGING_TO_CONSOLE", "1"}, {"READY_MAIN_BUS", "unix:path=/none"}};
    if (where == Where::Sandbox || where == Where::BesideABus) {
        variables["READY_MAIN_BUS"] = MPL::Doubles::SharedBus().Address();
    }
    if (where == Where::Sandbox || where == Where::SandboxWithoutBus) {
        variables["MPL_SANDBOX"] = "1";
    }
    int exitCode = -1;
    const std::string output = RunSubject(GetParam().arguments, variables, exitCode);
    EXPECT_EQ(exitCode, GetParam().exitCode) << output;
    for (const QString& text : QString(GetParam().output).split('|')) {
        const bool isUnwanted = text.startsWith('!');
        const std::string piece = text.mid(isUnwanted ? 1 : 0).toStdString();
        EXPECT_EQ(output.find(piece) == std::string::npos, isUnwanted) << piece << " in\n" << output;
    }
}

INSTANTIATE_TEST_SUITE_P(With, ReadyMain, testing::ValuesIn(kRuns),
                         [](const auto& aInfo) { return std::string(aInfo.param.what); });

TEST(ReadyMainOutsideASandbox, RunsItselfInOneWithItsOwnOptions)
{
    const QTemporaryDir folder;
    const QStringList arguments{"--sandbox", "--system-bus", "--", "--mine"};
    int exitCode = -1;
    const std::string cure = RunSubject(arguments, {{"PATH", folder.path()}}, exitCode);
    EXPECT_EQ(exitCode, 127);
    EXPECT_NE(cure.find("install the package mpl-test-support-host"), std::string::npos) << cure;

    QFile sandbox(folder.filePath("mpl-sandbox"));
    ASSERT_TRUE(sandbox.open(QIODevice::WriteOnly));
    sandbox.write("#!/bin/sh\necho \"$@\"\nexit 5\n");
    sandbox.close();
    ASSERT_TRUE(sandbox.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(RunSubject(arguments, {{"PATH", folder.path()}}, exitCode),
              "-- " READY_MAIN_SUBJECT " --sandbox --system-bus -- --mine\n");
    EXPECT_EQ(exitCode, 5);
}

} // namespace
