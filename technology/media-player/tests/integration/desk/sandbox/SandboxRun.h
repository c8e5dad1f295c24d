/// Runs mpl-sandbox as a user does, on a small stack made for the test.
#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

namespace sandbox
{

struct Outcome {
    int status = -1; ///< -1 when it did not end in time; 128 + N when signal N ended mpl-sandbox itself
    std::string out;
    std::string err;
};

/// A process as /proc shows it.
struct ProcessEntry {
    pid_t pid;
    pid_t parent;
    std::string arguments;
};

constexpr int kProgram = 0x5755; ///< permissions of a file that everybody may run

void WriteFile(const QString& aPath, const QByteArray& aText, int aPermissions = 0x6644);
/// What is in the file; nothing when it can't be read.
QByteArray ReadFile(const QString& aPath);

/// Test cases that start sandboxes. Every process of a case carries a mark in its environment, so that what
/// is left of it can be found.
class Sandbox : public testing::Test
{
protected:
    Sandbox();
    void SetUp() override;

    /// Runs mpl-sandbox with these arguments to its end.
    Outcome Run(const QStringList& aArguments);

    /// The arguments that run a shell script in a sandbox. In it `until_true command` waits a minute at most,
    /// by the sandbox's clock, until the command succeeds, and else ends the script.
    static QStringList ShellCommand(const QString& aScript);

    /// Runs mpl-sandbox, which must end with this status and say one line with this message.
    void ExpectRefusal(const QStringList& aArguments, int aStatus, const char* aMessage);

    /// Runs a shell script in a sandbox.
    Outcome RunScript(const QString& aScript, const QStringList& aOptions = {"--no-lifecycle-manager"});

    /// Skips the case, or fails it in CI, when no lifecycle manager can run here.
    void RequireLifecycleManager();

    /// Starts a script that prints a line when it is where the test wants it, and waits for that line.
    std::unique_ptr<QProcess> StartScript(const QString& aScript, const QStringList& aOptions = {});

    Outcome WaitForEnd(QProcess& aProcess) const;

    /// The running processes that carry this case's mark.
    std::vector<ProcessEntry> MarkedProcesses() const;

    /// Starts mpl-sandbox without waiting for anything.
    void Start(QProcess& aProcess, const QStringList& aArguments);

    /// Waits until the program has printed these bytes.
    static void WaitForOutput(QProcess& aProcess, const QByteArray& aPiece);

    /// Waits until no marked process is left, at most ten seconds.
    testing::AssertionResult WaitForNoProcess() const;

    /// The control groups that this case's sandboxes have; none once they have ended.
    QStringList SandboxGroups() const;

    /// What starts from now on runs as the user nobody, for whom root's folders may be closed: it runs a copy
    /// of mpl-sandbox in a folder that everybody can read. Only root can do this.
    void BecomeOrdinaryUser();

    QString StackFile(const QString& aName) const { return m_Stack.filePath(aName); }

    QProcessEnvironment m_Environment;
    QTemporaryDir m_Stack{"/tmp/mpl-stack-XXXXXX"}; // $TMPDIR may be closed for others
    QTemporaryDir m_OpenFolder{"/tmp/mpl-open-XXXXXX"};
    QList<qint64> m_SandboxIds;
    QStringList m_Command{MPL_SANDBOX_PROGRAM};
    QString m_WorkingFolder; ///< of what is started; empty: the test's own
};

} // namespace sandbox
