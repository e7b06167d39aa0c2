#include "agent/options.h"

#include <charconv>
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

} // namespace

std::string read_options(options &chosen, int count, char *const *words)
{
    for (int i = 1; i < count; i++) {
        std::string_view name = words[i];
        std::string_view value;
        // A value follows as a word of its own or behind "=".
        const std::size_t equals = name.find('=');
        const bool joined = equals != name.npos;
        if (joined) {
            value = name.substr(equals + 1);
            name = name.substr(0, equals);
        }
        const bool takes_value = name == "--listen" || name == "--port" || name == "--state"
                                 || name == "--captures" || name == "--netflow" || name == "--read"
                                 || name == "--speed" || name == "--voice" || name == "--interface"
                                 || name == "-i" || name == "--ring";
        if (takes_value && !joined) {
            if (++i == count)
                return std::string(name) + " needs a value";
            value = words[i];
        }
        if (joined && !takes_value)
            return "unknown option " + std::string(words[i]);

        if (name == "--listen") {
            chosen.host = value;
        } else if (name == "--port") {
            if (!read_number(value, chosen.port))
                return "no port number: " + std::string(value);
        } else if (name == "--state") {
            if (value.empty())
                return "no directory: --state";
            chosen.state = value;
        } else if (name == "--interface" || name == "-i") {
            if (value.empty())
                return "no interface: " + std::string(name);
            chosen.interfaces.emplace_back(value);
        } else if (name == "--read") {
            chosen.reading.files.emplace_back(value);
        } else if (name == "--speed") {
            if (value != "full" && value != "recorded")
                return "no speed: " + std::string(value);
            chosen.reading.recorded = value == "recorded";
        } else if (name == "--loop") {
            chosen.reading.repeat = true;
        } else if (name == "--hold") {
            chosen.reading.held = true;
        } else if (name == "--captures") {
            if (value.empty())
                return "no directory: --captures";
            chosen.captures = value;
        } else if (name == "--netflow") {
            if (!read_number(value, chosen.netflow.emplace()))
                return "no port number: " + std::string(value);
        } else if (name == "--ring") {
            if (!read_number(value, chosen.ring) || chosen.ring < 1 || chosen.ring > max_ring)
                return "no size of a ring (1 to 2047): " + std::string(value);
        } else if (name == "--voice") {
            if (value.empty())
                return "no file: --voice";
            chosen.voice = value;
        } else if (name == "--no-capture") {
            chosen.capture = false;
        } else if (name == "--help" || name == "-h") {
            chosen.help = true;
        } else {
            return "unknown option " + std::string(words[i]);
        }
    }
    if (!chosen.interfaces.empty() && !chosen.reading.files.empty())
        return "--interface and --read exclude each other";
    return {};
}
