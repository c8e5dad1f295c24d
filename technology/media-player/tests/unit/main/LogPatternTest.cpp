// What the log of a program on the ready main looks like.
#include "PrivateBus.h"

#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace
{

using MPL::Doubles::SharedBus;

class LogOfTheReadyMain : public testing::Test
{
protected:
    QString Log(const QString& aProgram, const QStringList& aArguments)
    {
        QProcess program;
        m_Environment.insert("READY_MAIN_BUS", SharedBus().Address());
        m_Environment.insert("QT_LOGGING_TO_CONSOLE", "1");
        program.setProcessEnvironment(m_Environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(aProgram, aArguments);
        EXPECT_TRUE(program.waitForFinished(20000)) << qPrintable(program.errorString());
        return QString::fromLocal8Bit(program.readAll());
    }

    QString Log() { return Log(QStringLiteral(READY_MAIN_SUBJECT), {"--gtest_filter=*.Passes"}); }

    QProcessEnvironment m_Environment = QProcessEnvironment::systemEnvironment();
};

TEST_F(LogOfTheReadyMain, HasSecondsAndLevelInEachLine)
{
    m_Environment.remove("QT_MESSAGE_PATTERN");
    const QString log = Log();
    const QRegularExpression line("^ *\\d+\\.\\d{3} debug    Attempting to connect",
                                  QRegularExpression::MultilineOption);
    EXPECT_TRUE(line.match(log).hasMatch()) << qPrintable(log);
    EXPECT_FALSE(log.contains(QChar(0x1B))) << qPrintable(log);
}

TEST_F(LogOfTheReadyMain, IsColouredOnATerminal)
{
    m_Environment.remove("QT_MESSAGE_PATTERN");
    m_Environment.remove("NO_COLOR");
    m_Environment.insert("TERM", "xterm");
    const QString command = QStringLiteral(READY_MAIN_SUBJECT " --gtest_filter=*.Passes");
    const QString log = Log("script", {"-qec", command, "/dev/null"});
    EXPECT_TRUE(log.contains("\033[2mdebug    Attempting to connect")) << qPrintable(log);
}

TEST_F(LogOfTheReadyMain, LooksAsTheUserAsked)
{
    m_Environment.insert("QT_MESSAGE_PATTERN", "mine: %{message}");
    const QString log = Log();
    EXPECT_TRUE(log.contains("mine: Attempting to connect")) << qPrintable(log);
}

} // namespace
