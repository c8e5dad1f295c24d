// The report of a run is there and true whatever becomes of the run.
#include "SandboxRun.h"

#include <QXmlStreamReader>

#include <csignal>

namespace sandbox
{

class Report : public Sandbox
{
protected:
    QStringList Command(const QString& aFilter) const
    {
        return {m_Report, "--", MPL_REPORT_SUBJECT, "--gtest_filter=" + aFilter};
    }

    Outcome RunSubject(const QStringList& aArguments)
    {
        QProcess process;
        process.setProcessEnvironment(m_Environment);
        process.start(MPL_JUNIT_PROGRAM, aArguments);
        return WaitForEnd(process);
    }

    /// "class.name element message" for each case, without the end of long messages. Fails when it is no XML.
    std::vector<std::string> Cases() const
    {
        QXmlStreamReader xml(ReadFile(m_Report));
        std::vector<std::string> cases;
        while (!xml.atEnd()) {
            xml.readNext();
            const QString name = xml.name().toString();
            const auto attribute = [&](const char* aName) {
                return xml.attributes().value(aName).toString().toStdString();
            };
            if (xml.isStartElement() && name == "testcase") {
                cases.push_back(attribute("classname") + "." + attribute("name"));
            } else if (xml.isStartElement() && !name.startsWith("testsuite")) {
                cases.back() += " " + name.toStdString() + " " + attribute("message");
            }
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
        return cases;
    }

    static bool Contains(const std::string& aText, const char* aPiece)
    {
        return aText.find(aPiece) != std::string::npos;
    }

    QTemporaryDir m_Folder;
    QString m_Report = m_Folder.filePath("report.xml");
};

TEST_F(Report, TellsHowEachCaseEnded)
{
    const Outcome outcome = RunSubject(Command("Subject.*:*/Typed.*-*Crashes:*Hangs"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(Contains(outcome.out, "no end of line[       OK ] Subject.PrintsAnything (")) << outcome.out;
    const std::vector<std::string> cases = Cases();
    ASSERT_EQ(cases.size(), 5U);
    EXPECT_EQ(cases[0], "Subject.Passes");
    EXPECT_TRUE(Contains(cases[1], "Subject.Fails failure ") && Contains(cases[1], "ReportSubject.cpp:"))
        << cases[1];
    EXPECT_TRUE(Contains(cases[2], "Subject.IsSkipped skipped ") &&
                Contains(cases[2], "no part of the machine"));
    EXPECT_EQ(cases[3], "Subject.PrintsAnything");
    EXPECT_TRUE(Contains(cases[4], "Each/Typed.FailsToo/0 failure")) << cases[4];
    EXPECT_EQ(RunSubject(Command("Subject.Passes")).status, 0);
    EXPECT_EQ(Cases(), std::vector<std::string>{"Subject.Passes"});
}

TEST_F(Report, NamesTheCaseThatCrashed)
{
    EXPECT_EQ(RunSubject(Command("Subject.Passes:*Crashes")).status, 128 + SIGABRT);
    EXPECT_EQ(Cases(), (std::vector<std::string>{
                           "Subject.Passes",
                           "Subject.Crashes error The program ended while this case was running: signal 6"}));
}

TEST_F(Report, TellsOfACrashAfterAFailedCase)
{
    EXPECT_EQ(RunSubject(Command("Subject.Fails:Closing.*")).status, 128 + SIGABRT);
    const std::vector<std::string> cases = Cases();
    ASSERT_EQ(cases.size(), 3U);
    EXPECT_EQ(cases[1], "Closing.Crashes");
    EXPECT_TRUE(Contains(cases[2], "error The program ended with signal 6 before")) << cases[2];
}

TEST_F(Report, TellsOfAProgramThatRanNoCase)
{
    EXPECT_EQ(RunSubject({m_Report, "--", "/nonexistent/program"}).status, 127);
    ASSERT_EQ(Cases().size(), 1U);
    EXPECT_TRUE(Contains(Cases().front(), "can't be run: No such file")) << Cases().front();
    for (const auto& [status, reported] : {std::pair(0, 1), std::pair(125, 125)}) {
        const QString number = QString::number(status);
        EXPECT_EQ(RunSubject({m_Report, "--", "sh", "-c", "exit " + number}).status, reported);
        const std::string error = "error The program ended with exit status " + number.toStdString();
        EXPECT_TRUE(Contains(Cases().front(), error.c_str())) << Cases().front();
    }
    const Outcome outcome = RunSubject({"/nonexistent/report.xml", "--", "true"});
    EXPECT_EQ(outcome.status, 125);
    EXPECT_TRUE(Contains(outcome.err, "can't be written to /nonexistent/report.xml")) << outcome.err;
}

TEST_F(Report, OfARunThatWasCutOffIsNeverGreen)
{
    const Outcome outcome = RunSubject(Command("Subject.Passes:Ending.*"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(Contains(outcome.err, "ended with exit status 0 before googletest closed its cases"))
        << outcome.err;
    EXPECT_EQ(Cases(),
              (std::vector<std::string>{
                  "Subject.Passes",
                  "Ending.CallsExit error The program ended while this case was running: exit status 0"}));
}

TEST_F(Report, TellsWhyASuiteCouldNotBeSetUpOrTornDown)
{
    EXPECT_EQ(RunSubject(Command("Subject.Passes:Unready.*")).status, 1);
    const std::vector<std::string> cases = Cases();
    ASSERT_EQ(cases.size(), 4U);
    EXPECT_EQ(cases[0], "Subject.Passes");
    EXPECT_TRUE(Contains(cases[1], "Unready.(set-up or tear-down) failure ") &&
                Contains(cases[1], "ReportSubject.cpp:") && Contains(cases[1], "the stack did not come"))
        << cases[1];
    EXPECT_TRUE(Contains(cases[2], "Unready.NeverRuns skipped")) << cases[2];
    EXPECT_TRUE(Contains(cases[3], "the stack did not go")) << cases[3];
}

TEST_F(Report, NamesTheRunWhenAProgramDiesBeforeItsFirstCase)
{
    m_Report = m_Folder.filePath("my_test.1.xml");
    EXPECT_EQ(RunSubject({m_Report, "--", "sh", "-c", "echo no bus; kill -9 $$"}).status, 128 + SIGKILL);
    QFile file(m_Report);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray report = file.readAll();
    EXPECT_TRUE(report.contains("classname=\"my_test.1\" name=\"(outside any case)\"")) << report.constData();
    EXPECT_TRUE(report.contains(">no bus\n</error>")) << report.constData();
}

TEST_F(Report, OutlivesTheKillOfEverything)
{
    const std::pair<const char*, const char*> ends[] = {
        {"Subject.Passes:Subject.Hangs", "Subject.Hangs error The run was cut off in this case"},
        {"Subject.Passes:Opening.Hangs", "report.(outside any case) error The run was cut off"}};
    for (const auto& [filter, error] : ends) {
        QProcess process;
        process.setProcessEnvironment(m_Environment);
        QStringList command = Command(filter);
        command.insert(2, "--");
        command.insert(2, MPL_SANDBOX_PROGRAM);
        process.start(MPL_JUNIT_PROGRAM, command);
        WaitForOutput(process, "hanging");
        process.kill();
        EXPECT_EQ(WaitForEnd(process).status, 128 + SIGKILL);
        EXPECT_TRUE(WaitForNoProcess()) << MarkedProcesses().front().arguments;
        const std::vector<std::string> cases = Cases();
        ASSERT_EQ(cases.size(), 2U);
        EXPECT_EQ(cases[1].find(error), 0U) << cases[1];
    }
}

} // namespace sandbox
