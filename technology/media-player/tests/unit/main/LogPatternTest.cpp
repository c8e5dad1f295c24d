// What the log of a program on the ready main looks like.
#include "PrivateBus.h"

#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace
{

using MPL::Doubles::PrivateBus;

class LogOfTheReadyMain : public testing::Test
{
protected:
    QString Log(const QString& aProgram, const QStringList& aArguments)
    {
        QProcess program;
        m_Environment.insert(QStringLiteral("READY_MAIN_BUS"), m_Bus.Address());
        m_Environment.insert(QStringLiteral("QT_LOGGING_TO_CONSOLE"), QStringLiteral("1"));
        program.setProcessEnvironment(m_Environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(aProgram, aArguments);
        EXPECT_TRUE(program.waitForFinished(20000)) << qPrintable(program.errorString());
        return QString::fromLocal8Bit(program.readAll());
    }

    QString Log()
    {
        return Log(QStringLiteral(READY_MAIN_SUBJECT), {QStringLiteral("--gtest_filter=*.Passes")});
    }

    PrivateBus m_Bus;
    QProcessEnvironment m_Environment = QProcessEnvironment::systemEnvironment();
};

TEST_F(LogOfTheReadyMain, HasSecondsAndLevelInEachLine)
{
    m_Environment.remove(QStringLiteral("QT_MESSAGE_PATTERN"));
    const QString log = Log();
    const QRegularExpression line(QStringLiteral("^ *\\d+\\.\\d{3} debug    Attempting to connect"),
                                  QRegularExpression::MultilineOption);
    EXPECT_TRUE(line.match(log).hasMatch()) << qPrintable(log);
    EXPECT_FALSE(log.contains(QChar(0x1B))) << qPrintable(log);
}

TEST_F(LogOfTheReadyMain, IsColouredOnATerminal)
{
    m_Environment.remove(QStringLiteral("QT_MESSAGE_PATTERN"));
    m_Environment.remove(QStringLiteral("NO_COLOR"));
    m_Environment.insert(QStringLiteral("TERM"), QStringLiteral("xterm"));
    const QString command = QStringLiteral(READY_MAIN_SUBJECT " --gtest_filter=*.Passes");
    const QString log =
        Log(QStringLiteral("script"), {QStringLiteral("-qec"), command, QStringLiteral("/dev/null")});
    EXPECT_TRUE(log.contains(QStringLiteral("\033[2mdebug    Attempting to connect"))) << qPrintable(log);
}

TEST_F(LogOfTheReadyMain, LooksAsTheUserAsked)
{
    m_Environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("mine: %{message}"));
    const QString log = Log();
    EXPECT_TRUE(log.contains(QStringLiteral("mine: Attempting to connect"))) << qPrintable(log);
}

} // namespace
