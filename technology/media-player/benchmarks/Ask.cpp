// Asks a service as soon as it answers: what a test does with a mock service.
//   benchmark_ask NAME PATH INTERFACE METHOD
// on the session bus; the status is 0 when an answer came within ten seconds.
#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdio>
#include <thread>

int main(int argc, char** argv)
{
    using namespace std::chrono_literals;
    sd_bus* bus = nullptr;
    if (argc != 5 || sd_bus_open_user(&bus) < 0) {
        std::fprintf(stderr, "usage: %s NAME PATH INTERFACE METHOD, on a session bus\n", argv[0]);
        return 2;
    }
    const auto end = std::chrono::steady_clock::now() + 10s;
    int result = -1;
    while (result < 0 && std::chrono::steady_clock::now() < end) {
        sd_bus_error error{};
        result = sd_bus_call_method(bus, argv[1], argv[2], argv[3], argv[4], &error, nullptr, nullptr);
        sd_bus_error_free(&error);
        std::this_thread::sleep_for(result < 0 ? 1ms : 0ms);
    }
    sd_bus_flush_close_unref(bus);
    return result < 0 ? 1 : 0;
}
