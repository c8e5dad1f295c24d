#include "BusRecorder.h"

#include "Bus.h"
#include "ConnectionAsker.h"
#include "LightTraffic.h"

#include <dbus/dbus.h>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>

namespace sandbox
{

namespace
{

constexpr int kSettleLimitMs = 2000;
constexpr int kLongestPauseMs = 64;
constexpr const char* kEndSignal = "EndOfRecording";

// Blocks until the socket's folder changes. False when the recording is to end.
bool WaitForChange(int aWatch, int aStop, int aLimitMs)
{
    pollfd events[] = {{aWatch, POLLIN, 0}, {aStop, POLLIN, 0}};
    poll(events, 2, aLimitMs);
    char ignored[4096];
    if (events[0].revents != 0 && read(aWatch, ignored, sizeof ignored) < 0) {
        return false;
    }
    return events[1].revents == 0;
}

bool BecomeMonitor(BusClient& aBus)
{
    DBusMessage* call = dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS,
                                                     DBUS_INTERFACE_MONITORING, "BecomeMonitor");
    const char** noRules = nullptr;
    const dbus_uint32_t noFlags = 0;
    dbus_message_append_args(call, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &noRules, 0, DBUS_TYPE_UINT32, &noFlags,
                             DBUS_TYPE_INVALID);
    DBusMessage* reply = dbus_connection_send_with_reply_and_block(aBus.Get(), call, kSettleLimitMs, nullptr);
    dbus_message_unref(call);
    if (reply == nullptr) {
        return false;
    }
    dbus_message_unref(reply);
    return true;
}

// Takes what has come in. False when the end of the recording was among it.
bool TakeQueue(BusClient& aBus, const std::function<void(DBusMessage*)>& aTake)
{
    bool isEnd = false;
    while (DBusMessage* message = isEnd ? nullptr : dbus_connection_pop_message(aBus.Get())) {
        isEnd = dbus_message_is_signal(message, kRecorderInterface, kEndSignal) != FALSE;
        // libdbus makes this one itself when the bus hangs up; it was never sent.
        if (!isEnd && dbus_message_is_signal(message, DBUS_INTERFACE_LOCAL, "Disconnected") == FALSE) {
            aTake(message);
        }
        dbus_message_unref(message);
    }
    return !isEnd;
}

// Takes what comes until the bus ends (true) or the recording does (false).
bool TakeAll(BusClient& aBus, const std::function<void(DBusMessage*)>& aTake)
{
    // The queue first: the first messages may have come in behind an answer.
    do {
        if (!TakeQueue(aBus, aTake)) {
            return false;
        }
    } while (dbus_connection_read_write(aBus.Get(), -1) != FALSE);
    return true;
}

bool RecordLightly(BusClient& aBus, const BusRecord& aRecord)
{
    LightTraffic traffic(aBus.Get(), aRecord.whole);
    return TakeAll(aBus, [&](DBusMessage* aMessage) { traffic.Take(aMessage); });
}

bool Record(BusClient& aBus, const BusRecord& aRecord, ConnectionAsker& aAsker)
{
    if (aRecord.isLight) {
        return RecordLightly(aBus, aRecord);
    }
    aRecord.whole.Tell(kAskerSignal, aAsker.Name());
    aAsker.AskAboutAll();
    return TakeAll(aBus, [&](DBusMessage* aMessage) {
        if (!aAsker.IsOwn(aMessage)) {
            aRecord.traffic.Write(aMessage);
        }
        aRecord.whole.Write(aMessage);
        aAsker.AskAboutNew(aMessage);
    });
}

// Messages keep their order on the way to a monitor: what it gets after this one was sent after it.
void SendEnd(const BusClient& aBus)
{
    DBusMessage* end = dbus_message_new_signal("/", kRecorderInterface, kEndSignal);
    dbus_connection_send(aBus.Get(), end, nullptr);
    dbus_connection_flush(aBus.Get());
    dbus_message_unref(end);
}

UniqueFd WatchFolderOf(const std::string& aSocket)
{
    UniqueFd watch(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    inotify_add_watch(watch.Get(), std::filesystem::path(aSocket).parent_path().c_str(),
                      IN_CREATE | IN_MOVED_TO);
    return watch;
}

[[noreturn]] void RunRecorder(const std::string& aSocket, const BusRecord& aRecord, int aStop,
                              UniqueFd aReady, UniqueFd aDone)
{
    prctl(PR_SET_NAME, "mpl-recorder");
    std::signal(SIGQUIT, SIG_IGN);
    aRecord.traffic.Begin();
    aRecord.whole.Begin();
    const std::string address = "unix:path=" + aSocket;
    // The kernel takes some ten milliseconds to close a watch, more than all else of a light record costs.
    const UniqueFd watch = aRecord.isLight ? UniqueFd() : WatchFolderOf(aSocket);
    int pauseMs = 1;
    for (;;) {
        const bool isThere = access(aSocket.c_str(), F_OK) == 0;
        BusClient bus;
        ConnectionAsker asker;
        if (isThere) {
            bus = BusClient::Connect(address);
        }
        if (bus.IsConnected() && aRecord.whole.IsThere() && !aRecord.isLight) {
            asker = ConnectionAsker(address);
        }
        const bool hears = bus.IsConnected() && (aRecord.isLight || BecomeMonitor(bus));
        aReady.Close();
        // A socket that is there refuses until its daemon listens, which no event tells; and for ever when
        // its daemon was killed.
        const bool isPolling = isThere || aRecord.isLight;
        pauseMs = hears || !isPolling ? 1 : std::min(2 * pauseMs, kLongestPauseMs);
        if (hears ? !Record(bus, aRecord, asker)
                  : !WaitForChange(watch.Get(), aStop, isPolling ? pauseMs : -1)) {
            aDone.Close();
            if (aRecord.isLight && hears) {
                pause();
            }
            _exit(0);
        }
    }
}

} // namespace

BusRecorder::BusRecorder(std::string aSocket, const BusRecord& aRecord) : m_Socket(std::move(aSocket))
{
    Pipe stop = MakePipe();
    Pipe ready = MakePipe();
    Pipe done = MakePipe();
    m_StaysConnected = aRecord.isLight;
    m_Process = stop.read.IsValid() && ready.read.IsValid() ? fork() : -1;
    if (m_Process == 0) {
        stop.write.Close();
        RunRecorder(m_Socket, aRecord, stop.read.Get(), std::move(ready.write), std::move(done.write));
    }
    ready.write.Close();
    pollfd isReady = {ready.read.Get(), POLLIN, 0};
    poll(&isReady, 1, kSettleLimitMs);
    m_Stop = std::move(stop.write);
    m_Done = std::move(done.read);
}

BusRecorder::~BusRecorder()
{
    if (m_Process <= 0) {
        return;
    }
    m_Stop.Close();
    if (const BusClient bus = BusClient::Connect("unix:path=" + m_Socket); bus.IsConnected()) {
        SendEnd(bus);
    }
    pollfd done = {m_Done.Get(), POLLIN, 0};
    if (poll(&done, 1, kSettleLimitMs) != 1) {
        kill(m_Process, SIGKILL);
    }
    if (!m_StaysConnected) {
        WaitForEnd(m_Process);
    }
}

} // namespace sandbox
