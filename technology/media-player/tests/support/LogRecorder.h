/// Takes Qt's log while it lives: each message is noted as "<level>: <text>", with the levels debug, info,
/// warning, critical and fatal. A category other than the default one stands in brackets behind the level.
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
