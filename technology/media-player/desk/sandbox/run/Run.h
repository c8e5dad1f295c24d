/// One run of a test program in a sandbox: what happened, and when.
#pragma once

#include "LogLevel.h"
#include "TestCase.h"

#include <string>
#include <vector>

namespace sandbox
{

/// The program slept.
struct Pause {
    Span span;
    double askedMs = 0; ///< by the program's own clock
    int process = 0;
};

/// A signal that one process sent to another.
struct SentSignal {
    Moment time = 0;
    int number = 0;
    int sender = 0;
    std::string senderName;
};

struct ProcessEnd {
    enum class How { Unknown, Exit, Signal } how = How::Unknown;
    int number = 0; ///< exit status or signal
};

/// A function that was running when a program crashed.
struct Frame {
    std::string file;     ///< the program or a library
    std::string function; ///< or its address in the file
    std::string place;    ///< "file.cpp:12"; empty: not known
};

/// One program from its start to its end; of a process that became another program, the last one.
struct ProcessLife {
    int id = 0; ///< inside the sandbox
    int parent = 0;
    std::string parentName;
    std::string name;    ///< of the executable
    std::string path;    ///< as it was started; empty: a copy of its parent
    std::string command; ///< all arguments
    std::string service; ///< the service that it is, or has become another program from; empty: none
    std::string problem; ///< why it could not be run, in the system's words; it never was a program then
    Span span;
    ProcessEnd end;
    std::vector<SentSignal> signals; ///< to it, in order
    std::vector<Frame> crash;        ///< where it crashed, and who called that, and so on; empty: not known
    bool isMachinery = false;        ///< the sandbox's own
};

enum class Bus { Private, System };

/// A connection to a bus; the name that it has there is never given to another.
struct Connection {
    Bus bus = Bus::Private;
    std::string name;
    int process = 0; ///< 0: not known
    Span span;
};

/// A well-known name had an owner.
struct NameOwnership {
    Bus bus = Bus::Private;
    std::string name;
    std::string owner; ///< the name of its connection
    int process = 0;
    Span span;
};

struct Call {
    enum class State { Replied, Failed, NoReply };

    Bus bus = Bus::Private;
    std::string from;
    std::string to;
    std::string path;
    std::string interface;
    std::string member;
    std::string request; ///< its arguments as text
    std::string reply;   ///< and the answer's; for an error its text
    std::string error;   ///< its name
    State state = State::NoReply;
    bool wantsReply = true;
    Span span;
};

struct Signal {
    Bus bus = Bus::Private;
    Moment time = 0;
    std::string from;
    std::string path;
    std::string interface;
    std::string member;
    std::string content;
};

/// A job that the lifecycle manager has ended.
struct Job {
    Moment time = 0;
    std::string unit;
    std::string result;
};

/// A unit of the lifecycle manager that was not well when the program had ended.
struct Unit {
    std::string name;
    std::string state;  ///< in the manager's words, as are the others
    std::string result; ///< how it failed
};

/// A line that some process printed.
struct LogLine {
    Moment time = 0;
    std::string text;
    LogLevel level = LogLevel::Output;
    std::string process; ///< its name
};

enum class RunResult { Passed, Failed, Crashed, Killed, TimedOut, CutOff };

struct Run {
    std::vector<std::string> command;
    long long start =
        0; ///< of the program, or of the sandbox when it got no further: nanoseconds since the epoch
    Moment end = 0;
    std::string speed = "1";
    RunResult result = RunResult::CutOff;
    int status = 0; ///< of the program as a shell counts it
    int program = 0;
    std::string limit; ///< seconds that it was given, when it ran out of them

    Cases cases;
    std::vector<Pause> pauses;
    std::vector<ProcessLife> processes;
    std::vector<Connection> connections;
    std::vector<NameOwnership> names;
    std::vector<Call> calls;
    std::vector<Signal> signals;
    std::vector<Job> jobs;
    std::vector<Unit> units;
    std::vector<LogLine> log;
};

/// The last process of that id that had begun by then; none: nullptr.
const ProcessLife* FindProcess(const Run& aRun, int aId, Moment aTime);

/// The process of a connection, by the connection's name; nullptr when it is not known.
const ProcessLife* ProcessBehind(const Run& aRun, Bus aBus, const std::string& aConnection, Moment aTime);

/// "media_manager (pid 23)"; empty when it is not known.
std::string ProcessTitle(const Run& aRun, int aId, Moment aTime);

/// "private bus"
const char* WordOf(Bus aBus);

/// " in Suite.Case", or " in the set-up of suite Suite", whichever was running at the end; otherwise empty.
std::string InCase(const Run& aRun);

/// The result in one sentence.
std::string ResultText(const Run& aRun);

/// "Load() at Manager.cpp:12", or "raise in libc.so.6" when the line is not known.
std::string FrameText(const Frame& aFrame);

/// "exit status 0", "signal 9 (Killed)", "still ran at the end".
std::string EndText(const ProcessLife& aProcess);

} // namespace sandbox
