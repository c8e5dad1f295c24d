/// @file
/// Makes the programs of the simulated stack late, wrong, silent or stubborn, to see how a test and the
/// library bear it:
///
///     MPL::SimulatedFaults faults;
///     ASSERT_TRUE(faults.StartDelay("media_manager", 3000));
///     ASSERT_TRUE(faults.Reply<Manager>("media_manager", "GetActiveMediaSource", MPL::ReplyFault::Never));
///     EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
///
/// A program reads its faults when it starts, so set them before. They hold as long as the object lives, of
/// which a test has one at a time. Only a test in mpl-sandbox can set any; a stack other than the simulated
/// one takes no notice. The target is Mpl::SimulatedFaults.
#pragma once

#include <QJsonObject>
#include <QMetaObject>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace MPL
{

/// What becomes of the reply of a method.
enum class ReplyFault {
    Error,          ///< A D-Bus error; nothing is done.
    Never,          ///< None; nothing is done.
    WrongSignature, ///< A floating-point number, which no method returns.
    SignalFirst,    ///< What the call signals goes out before its reply, not after it.
    Die             ///< The program is killed when the call arrives.
};

/// The faults of the programs that start while it lives. Each function adds one. It fails and changes nothing
/// when there is no such program (the message names those there are), the number is negative, or the faults
/// can't be written.
class SimulatedFaults
{
public:
    SimulatedFaults() = default;
    /// Takes all faults away.
    ~SimulatedFaults();

    /// The program says its first word on the bus that many milliseconds after its start.
    [[nodiscard]] testing::AssertionResult StartDelay(const QString& aProgram, int aMilliseconds);
    /// Its objects are there, but it never asks for its bus name.
    [[nodiscard]] testing::AssertionResult NeverOwnName(const QString& aProgram);
    /// The media manager exports so many manager objects instead of one.
    [[nodiscard]] testing::AssertionResult ManagerObjects(int aCount);
    /// SIGTERM does not end it.
    [[nodiscard]] testing::AssertionResult IgnoreSigterm(const QString& aProgram);
    /// It kills itself that many milliseconds after its start.
    [[nodiscard]] testing::AssertionResult CrashAfter(const QString& aProgram, int aMilliseconds);
    /// It keeps its bus name that many milliseconds after its start, but answers nothing any more; only
    /// SIGKILL ends it.
    [[nodiscard]] testing::AssertionResult HangAfter(const QString& aProgram, int aMilliseconds);

    /// A method of the interface of `Proxy`, one of the generated proxies, gets another reply. Fails with the
    /// methods that there are for any other.
    template <typename Proxy>
    [[nodiscard]] testing::AssertionResult Reply(const QString& aProgram, const QString& aMethod,
                                                 ReplyFault aFault)
    {
        return Reply(aProgram, QLatin1String(Proxy::staticInterfaceName()), Proxy::staticMetaObject, aMethod,
                     aFault);
    }

private:
    Q_DISABLE_COPY(SimulatedFaults)

    testing::AssertionResult Reply(const QString& aProgram, const QString& aInterface,
                                   const QMetaObject& aProxy, const QString& aMethod, ReplyFault aFault);
    testing::AssertionResult Add(const QString& aProgram, const QString& aFault, const QJsonValue& aValue);
    testing::AssertionResult AddNumber(const QString& aProgram, const QString& aFault, int aNumber);

    QJsonObject m_Programs;
};

} // namespace MPL
