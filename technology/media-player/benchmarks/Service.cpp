// The service that benchmarks talk to: as quick as one can be, so that what is measured is the caller.
//   benchmark_service NAME OBJECTS
// owns NAME on the session bus, says "ready" and answers Introspect, for a tree of OBJECTS that are media
// sources, and GetSourceName. It ends when its input is a pipe that is closed.
#include <systemd/sd-bus.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>

namespace
{

using Tree = std::unordered_map<std::string, std::string>;

constexpr int kPerGroup = 10;

// What is between the node tags of an introspection text.
std::string ReadInterface(const char* aFile)
{
    std::ifstream file(aFile);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::size_t begin = text.find("<node>") + 6;
    return text.substr(begin, text.rfind("</node>") - begin);
}

std::string Node(const std::string& aInterfaces, const std::string& aChildren)
{
    static const std::string kCommon = ReadInterface(STANDARD_INTERFACES);
    return "<!DOCTYPE node PUBLIC \"-//freedesktop//DTD D-BUS Object Introspection 1.0//EN\"\n"
           "\"http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd\">\n<node>\n" +
           aInterfaces + kCommon + aChildren + "</node>\n";
}

std::string Child(const std::string& aName)
{
    return "  <node name=\"" + aName + "\"/>\n";
}

// Introspection texts by path. Every eleventh object is a group at the root that holds the ten after it.
Tree MakeTree(int aObjects)
{
    const std::string source = ReadInterface(MEDIA_SOURCE_INTERFACE);
    Tree tree;
    std::string groups;
    for (int group = 0; group * (kPerGroup + 1) < aObjects; ++group) {
        const std::string name = "group" + std::to_string(group);
        std::string leaves;
        const int left = aObjects - group * (kPerGroup + 1) - 1;
        for (int leaf = 0; leaf < std::min(left, kPerGroup); ++leaf) {
            const std::string leafName = "source" + std::to_string(group * kPerGroup + leaf);
            tree.emplace(std::string("/").append(name).append("/").append(leafName), Node(source, ""));
            leaves += Child(leafName);
        }
        tree.emplace("/" + name, Node("", leaves));
        groups += Child(name);
    }
    tree["/"] = Node("", groups);
    return tree;
}

int Answer(sd_bus_message* aCall, void* aTree, sd_bus_error* /*error*/)
{
    const auto& tree = *static_cast<const Tree*>(aTree);
    const std::string_view member = sd_bus_message_get_member(aCall);
    if (member == "GetSourceName") {
        return sd_bus_reply_method_return(aCall, "s", "a media source");
    }
    const auto node = tree.find(sd_bus_message_get_path(aCall));
    const bool asked = member == "Introspect" && node != tree.end();
    return asked ? sd_bus_reply_method_return(aCall, "s", node->second.c_str()) : 0;
}

// Answers until the other end of the input is closed.
void Serve(sd_bus* aBus)
{
    pollfd waited[] = {{sd_bus_get_fd(aBus), POLLIN, 0}, {STDIN_FILENO, 0, 0}};
    while ((waited[1].revents & POLLHUP) == 0) {
        while (sd_bus_process(aBus, nullptr) > 0) {
        }
        poll(waited, 2, -1);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s NAME OBJECTS\n", argv[0]);
        return 2;
    }
    Tree tree = MakeTree(std::atoi(argv[2]));
    sd_bus* bus = nullptr;
    if (sd_bus_open_user(&bus) < 0 || sd_bus_add_fallback(bus, nullptr, "/", &Answer, &tree) < 0 ||
        sd_bus_request_name(bus, argv[1], 0) < 0) {
        std::fprintf(stderr, "%s: no session bus; run below dbus-run-session\n", argv[0]);
        return 1;
    }
    std::puts("ready");
    std::fflush(stdout);
    Serve(bus);
    sd_bus_close_unref(bus);
    return 0;
}
