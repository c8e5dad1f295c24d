// Takes a name on a bus away from whom it belongs to, says so on standard output, and answers whoever calls
// it with an error ("refuse") or not at all ("mute"). Usage: mpl_chaos_accomplice ADDRESS NAME refuse|mute
#include <systemd/sd-bus.h>

#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace
{

int Refuse(sd_bus_message* aCall, void* /*data*/, sd_bus_error* /*error*/)
{
    uint8_t type = 0;
    sd_bus_message_get_type(aCall, &type);
    return type == SD_BUS_MESSAGE_METHOD_CALL
               ? sd_bus_reply_method_errorf(aCall, SD_BUS_ERROR_ACCESS_DENIED, "refused on purpose")
               : 0;
}

int Connect(const char* aAddress, const char* aName, sd_bus** aBus)
{
    sd_bus_new(aBus);
    int result = sd_bus_set_address(*aBus, aAddress);
    result = result < 0 ? result : sd_bus_set_bus_client(*aBus, 1);
    result = result < 0 ? result : sd_bus_start(*aBus);
    return result < 0 ? result : sd_bus_request_name(*aBus, aName, 0);
}

} // namespace

int main(int argc, char** argv)
{
    sd_bus* bus = nullptr;
    if (argc != 4 || Connect(argv[1], argv[2], &bus) < 0) {
        std::puts("the name can't be had");
        return 1;
    }
    std::puts("the name is taken");
    std::fflush(stdout);
    if (std::strcmp(argv[3], "mute") == 0) {
        while (true) {
            pause();
        }
    }
    sd_bus_add_filter(bus, nullptr, Refuse, nullptr);
    while (sd_bus_process(bus, nullptr) > 0 || sd_bus_wait(bus, UINT64_MAX) >= 0) {
    }
    return 0;
}
