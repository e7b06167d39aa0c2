// SPDX-License-Identifier: MIT
#include "agent/options.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

const char usage[] = R"(usage: rmon-agent [options]

A monitoring agent (ONC RPC program 99999 version 1, TCP) that measures this machine's own interfaces.

  --listen ADDRESS   address or name to listen on (127.0.0.1). There is no authentication:
                     whoever reaches the address can read and change all of it.
  --port NUMBER      TCP port (9911); 0 takes any free one
  --interface NAME   measure this interface only; may be given several times, or as -i NAME.
                     All Ethernet interfaces and the loopback are measured when it is not given.
  --read FILE        measure a capture file (pcap, pcapng) instead of this machine's interfaces; may be
                     given several times, the first file is interface 1
  --speed SPEED      of reading files: "full" (as fast as possible) or "recorded"
  --loop             begin a file again at its end
  --hold             begin to read only at SIGUSR1, so that rows can be set before
  --netflow NUMBER   UDP port on which NetFlow export packets (versions 5 and 9) are taken; 0 takes
                     any free one
  --voice FILE       scenario of phones and calls that fills the voice tables (agent/voice.ini)
  --state DIRECTORY  keep all that is set in this directory, over restarts
  --no-capture       take Ethernet statistics from the kernel's counters, even with the right to capture
  --ring MIB         kernel memory in which frames wait until they are counted, of each interface, 1 to
                     2047. When not given 364, for a second of the shortest frames at 1 Gbit/s, but
                     of all interfaces together no more than an eighth of this machine's memory
  --captures DIR     where captured packets are saved when a client asks for it; made when it
                     is not there. Without it nothing is saved.
  --help             this text

When it is ready it says so on standard output: "rmon-agent: listening on ADDRESS:PORT".
SIGINT and SIGTERM end it with exit code 0, SIGHUP changes nothing; a failed start has 1, a wrong command line 2.
)";

namespace {

/** MiB; libpcap takes the size as a signed number of octets. */
constexpr uint32_t max_ring = 2047;

template <class Number> bool read_number(std::string_view text, Number &number)
{
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && rest == end;
}

/** What stands behind an option's name. */
enum class wanted_value {
    none,
    any,
    text,   // not an empty one
    judged, // one that the option takes
};

struct known_option {
    std::string_view name;
    wanted_value value;
    const char *wrong; // in front of the name where a text is missing, of the value where it is refused
    bool (*take)(options &chosen, std::string_view value);
};

bool take_interface(options &chosen, std::string_view value)
{
    chosen.interfaces.emplace_back(value);
    return true;
}

bool take_speed(options &chosen, std::string_view value)
{
    chosen.reading.recorded = value == "recorded";
    return value == "full" || value == "recorded";
}

bool take_ring(options &chosen, std::string_view value)
{
    return read_number(value, chosen.ring) && chosen.ring >= 1 && chosen.ring <= max_ring;
}

template <auto Member> bool take_text(options &chosen, std::string_view value)
{
    chosen.*Member = value;
    return true;
}

bool turn_help_on(options &chosen, std::string_view)
{
    chosen.help = true;
    return true;
}

constexpr known_option known_options[] = {
    {"--listen", wanted_value::any, "", take_text<&options::host>},
    {"--port", wanted_value::judged, "no port number: ",
     [](options &chosen, std::string_view value) { return read_number(value, chosen.port); }},
    {"--interface", wanted_value::text, "no interface: ", take_interface},
    {"-i", wanted_value::text, "no interface: ", take_interface},
    {"--no-capture", wanted_value::none, "",
     [](options &chosen, std::string_view) {
         chosen.capture = false;
         return true;
     }},
    {"--read", wanted_value::any, "",
     [](options &chosen, std::string_view value) {
         chosen.reading.files.emplace_back(value);
         return true;
     }},
    {"--speed", wanted_value::judged, "no speed: ", take_speed},
    {"--loop", wanted_value::none, "",
     [](options &chosen, std::string_view) {
         chosen.reading.repeat = true;
         return true;
     }},
    {"--hold", wanted_value::none, "",
     [](options &chosen, std::string_view) {
         chosen.reading.held = true;
         return true;
     }},
    {"--netflow", wanted_value::judged, "no port number: ",
     [](options &chosen, std::string_view value) { return read_number(value, chosen.netflow.emplace()); }},
    {"--voice", wanted_value::text, "no file: ", take_text<&options::voice>},
    {"--state", wanted_value::text, "no directory: ", take_text<&options::state>},
    {"--ring", wanted_value::judged, "no size of a ring (1 to 2047): ", take_ring},
    {"--captures", wanted_value::text, "no directory: ", take_text<&options::captures>},
    {"--help", wanted_value::none, "", turn_help_on},
    {"-h", wanted_value::none, "", turn_help_on},
};

} // namespace

std::string read_options(options &chosen, int count, char *const *words)
{
    for (int i = 1; i < count; i++) {
        const std::string_view word = words[i];
        // A value follows as a word of its own or behind "=".
        const std::size_t equals = word.find('=');
        const bool joined = equals != word.npos;
        const std::string_view name = word.substr(0, equals);
        const auto *option = std::ranges::find(known_options, name, &known_option::name);
        const bool known = option != std::end(known_options);
        if (!known || (joined && option->value == wanted_value::none))
            return "unknown option " + std::string(word);

        std::string_view value;
        if (joined)
            value = word.substr(equals + 1);
        else if (option->value != wanted_value::none && ++i == count)
            return std::string(name) + " needs a value";
        else if (option->value != wanted_value::none)
            value = words[i];

        if (option->value == wanted_value::text && value.empty())
            return option->wrong + std::string(name);
        if (!option->take(chosen, value))
            return option->wrong + std::string(value);
    }
    if (!chosen.interfaces.empty() && !chosen.reading.files.empty())
        return "--interface and --read exclude each other";
    return {};
}
