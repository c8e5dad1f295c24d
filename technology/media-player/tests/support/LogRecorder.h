/// Takes Qt's log while it lives, into notes that begin with it: each message is noted as "<level>: <text>",
/// with the levels debug, info, warning, critical and fatal. A category other than the default one stands in
/// brackets behind the level.
///
///     const LogRecorder log;
///     qDebug() << "gone";
///     EXPECT_EQ(Text(Notes()), "debug: gone");
#pragma once

#include <QtGlobal>

namespace MPL::Doubles
{

class LogRecorder
{
public:
    LogRecorder();
    ~LogRecorder();

private:
    Q_DISABLE_COPY(LogRecorder)

    QtMessageHandler m_Previous;
};

} // namespace MPL::Doubles
