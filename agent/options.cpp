// SPDX-License-Identifier: MIT
#include "agent/options.h"

#include "agent/core/memory.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <span>
#include <string_view>

namespace {

/** MiB; libpcap takes the size as a signed number of octets. */
constexpr uint32_t max_ring = 2047;

template <class Number> bool read_number(std::string_view text, Number &number)
{
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && rest == end;
}

/** Why a text is no value of an option; nothing when it is one. */
using mistake = std::string;

template <auto Member> mistake set_text(options &chosen, std::string_view value)
{
    chosen.*Member = value;
    return {};
}

template <auto Member> mistake set_flag(options &chosen, std::string_view)
{
    chosen.*Member = true;
    return {};
}

mistake set_port(options &chosen, std::string_view value)
{
    return read_number(value, chosen.port) ? "" : "no port number";
}

mistake set_allowed(options &chosen, std::string_view value)
{
    const std::optional<network> one = parse_network(value);
    if (!one)
        return "no network";
    chosen.allowed.push_back(*one);
    return {};
}

mistake set_interface(options &chosen, std::string_view value)
{
    chosen.interfaces.emplace_back(value);
    return {};
}

mistake set_read(options &chosen, std::string_view value)
{
    chosen.reading.files.emplace_back(value);
    return {};
}

mistake set_speed(options &chosen, std::string_view value)
{
    chosen.reading.recorded = value == "recorded";
    return value == "full" || value == "recorded" ? "" : "no speed";
}

mistake set_loop(options &chosen, std::string_view)
{
    chosen.reading.repeat = true;
    return {};
}

mistake set_hold(options &chosen, std::string_view)
{
    chosen.reading.held = true;
    return {};
}

mistake set_netflow(options &chosen, std::string_view value)
{
    return read_number(value, chosen.netflow.emplace()) ? "" : "no port number";
}

mistake set_no_capture(options &chosen, std::string_view)
{
    chosen.capture = false;
    return {};
}

mistake set_ring(options &chosen, std::string_view value)
{
    const bool fits = read_number(value, chosen.ring) && chosen.ring >= 1 && chosen.ring <= max_ring;
    return fits ? "" : "no size of a ring (1 to 2047)";
}

/** Octets, or with K, M or G behind them as many units of 2^10, 2^20 or 2^30; the bounds of it in the same
 * form. */
mistake set_memory(options &chosen, std::string_view value)
{
    constexpr std::string_view units = "KMG";
    constexpr uint64_t largest = uint64_t{1} << 46;
    const std::size_t unit = value.empty() ? units.npos : units.find(value.back());
    const int bits = unit == units.npos ? 0 : 10 * (static_cast<int>(unit) + 1);
    if (bits)
        value.remove_suffix(1);
    const bool fits = read_number(value, chosen.memory) && chosen.memory <= largest >> bits
                      && chosen.memory << bits >= smallest_memory;
    chosen.memory <<= fits ? bits : 0;
    return fits ? "" : "no size of the memory (16M to 65536G)";
}

/** Who may give an option. */
enum class giver { anyone, words_alone };

/** An option: its name on the command line, and without the dashes in a configuration file. */
struct option {
    std::string_view name;
    std::string_view value; // what stands for its value in the help; empty: it takes none
    std::string_view text;  // lines of the help
    mistake (*set)(options &, std::string_view value);
    std::string_view missing = {}; // said of an empty value, where the option doesn't judge it
    giver given_by = giver::anyone;
};

// clang-format off
constexpr option all[] = {
    {"--listen", "ADDRESS", "address or name to listen on (127.0.0.1). There is no authentication:\n"
                            "whoever is allowed (--allow) can read and change all of it.",
     set_text<&options::host>},
    {"--port", "NUMBER", "TCP port (9911); 0 takes any free one", set_port},
    {"--allow", "NETWORK", "take clients of this network (10.1.0.0/16, ::1); may be given several times.\n"
                           "Those of the loopback alone (127.0.0.0/8, ::1) when it is not given.",
     set_allowed},
    {"--interface", "NAME", "measure this interface only; may be given several times, or as -i NAME.\n"
                            "All Ethernet interfaces and the loopback are measured when it is not given.",
     set_interface, "no interface"},
    {"--read", "FILE", "measure a capture file (pcap, pcapng) instead of this machine's interfaces; may be\n"
                       "given several times, the first file is interface 1",
     set_read},
    {"--speed", "SPEED", "of reading files: \"full\" (as fast as possible) or \"recorded\"", set_speed},
    {"--loop", "", "begin a file again at its end", set_loop},
    {"--hold", "", "begin to read only at SIGUSR1, so that rows can be set before", set_hold},
    {"--netflow", "NUMBER", "UDP port on which NetFlow export packets (versions 5 and 9) are taken; 0 takes\n"
                            "any free one",
     set_netflow},
    {"--voice", "FILE", "scenario of phones and calls that fills the voice tables (agent/voice.ini). When not\n"
                        "given, calls of SCCP, H.323 and MGCP are measured, where tshark is installed.",
     set_text<&options::voice>, "no file"},
    {"--state", "DIRECTORY", "keep all that is set in this directory, over restarts",
     set_text<&options::state>, "no directory"},
    {"--no-capture", "", "take Ethernet statistics from the kernel's counters, even with the right to capture",
     set_no_capture},
    {"--ring", "MIB", "kernel memory in which frames wait until they are counted, of each interface, 1 to\n"
                      "2047. When not given 364, for a second of the shortest frames at 1 Gbit/s, but\n"
                      "of all interfaces together no more than an eighth of this machine's memory",
     set_ring},
    {"--memory", "SIZE", "octets of all that is learned, in tables, histories and capture buffers, at most; K, M\n"
                         "or G behind the number for units of 2^10, 2^20, 2^30. A quarter of this machine's\n"
                         "memory, or of its control group's, when not given",
     set_memory},
    {"--captures", "DIR", "where captured packets are saved when a client asks for it; made when it\n"
                          "is not there. Without it nothing is saved.",
     set_text<&options::captures>, "no directory"},
    {"--user", "NAME", "become this user once all is open, and keep the right to capture alone",
     set_text<&options::user>, "no user"},
    {"--config", "FILE", "read options from this file: a line each, \"name = value\" without the dashes,\n"
                         "\"name\" alone for one without a value, # before a remark. What stands on the\n"
                         "command line wins.",
     set_text<&options::config>, "no file", giver::words_alone},
    {"--version", "", "what this is, and of which version", set_flag<&options::version>, {}, giver::words_alone},
    {"--help", "", "this text", set_flag<&options::help>, {}, giver::words_alone},
};
// clang-format on

const option *find_option(std::string_view name)
{
    if (name == "-i")
        name = "--interface";
    if (name == "-h")
        name = "--help";
    const auto found = std::ranges::find(all, name, &option::name);
    return found == std::end(all) ? nullptr : found;
}

/** An option as it was given, under whichever of its names. */
struct given_option {
    const option *what;
    std::string name, value;
    std::string where; // "FILE line N: ", empty on the command line
};

/** Finds out which options the words give. */
mistake split_words(const std::vector<std::string> &words, std::vector<given_option> &given)
{
    for (std::size_t i = 0; i < words.size(); i++) {
        // A value follows as a word of its own or behind "=".
        const std::size_t equals = words[i].find('=');
        const bool joined = equals != std::string::npos;
        given_option one{nullptr, words[i].substr(0, equals), joined ? words[i].substr(equals + 1) : "", ""};
        one.what = find_option(one.name);
        const bool takes_value = one.what && !one.what->value.empty();
        if (!one.what || (joined && !takes_value))
            return "unknown option " + words[i];
        if (takes_value && !joined) {
            if (++i == words.size())
                return one.name + " needs a value";
            one.value = words[i];
        }
        given.push_back(one);
    }
    return {};
}

std::string trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == text.npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

/** What one line of a configuration file gives. */
mistake split_line(const std::string &line, std::vector<given_option> &given)
{
    const std::size_t equals = line.find('=');
    const bool joined = equals != std::string::npos;
    const std::string name = trimmed(line.substr(0, equals));
    const option *what = find_option("--" + name);
    if (!what || what->given_by == giver::words_alone)
        return "unknown option " + name;
    if (joined == what->value.empty())
        return name + (joined ? " takes no value" : " needs a value");
    given.push_back({what, name, joined ? trimmed(line.substr(equals + 1)) : "", ""});
    return {};
}

mistake read_file(const std::string &path, std::vector<given_option> &given)
{
    std::ifstream file(path);
    std::string line;
    for (int number = 1; std::getline(file, line); number++) {
        line = trimmed(line);
        if (line.empty() || line[0] == '#')
            continue;
        const std::string where = path + " line " + std::to_string(number) + ": ";
        if (mistake wrong = split_line(line, given); !wrong.empty())
            return where + wrong;
        given.back().where = where;
    }
    return file.eof() ? "" : "cannot read " + path;
}

mistake set_all(options &chosen, std::span<const given_option> given)
{
    for (const given_option &one : given) {
        if (one.value.empty() && !one.what->missing.empty())
            return one.where + std::string(one.what->missing) + ": " + one.name;
        if (const mistake wrong = one.what->set(chosen, one.value); !wrong.empty())
            return one.where + wrong + ": " + one.value;
    }
    return {};
}

} // namespace

std::string read_options(options &chosen, const std::vector<std::string> &words)
{
    std::vector<given_option> by_words, by_file;
    mistake wrong = split_words(words, by_words);
    const auto config =
        std::ranges::find(by_words, "--config", [](const given_option &one) { return one.what->name; });
    if (wrong.empty() && config != by_words.end())
        wrong = read_file(config->value, by_file);
    // Of an option that may be given several times, too, the words replace what the file has.
    std::erase_if(by_file, [&](const given_option &one) {
        return std::ranges::find(by_words, one.what, &given_option::what) != by_words.end();
    });
    if (wrong.empty())
        wrong = set_all(chosen, by_file);
    if (wrong.empty())
        wrong = set_all(chosen, by_words);
    if (wrong.empty() && !chosen.interfaces.empty() && !chosen.reading.files.empty())
        return "--interface and --read exclude each other";
    return wrong;
}

std::string usage()
{
    std::string text =
        "usage: rmon-agent [options]\n"
        "\n"
        "A monitoring agent (ONC RPC program 99999 version 1, TCP) that measures this machine's own "
        "interfaces.\n"
        "\n";
    constexpr std::size_t column = 21;
    for (const option &one : all) {
        std::string line =
            "  " + std::string(one.name) + (one.value.empty() ? "" : " ") + std::string(one.value);
        line.resize(std::max(line.size() + 1, column), ' ');
        text += line;
        for (const char c : one.text) {
            text += c;
            if (c == '\n')
                text.append(column, ' ');
        }
        text += '\n';
    }
    return text
           + "\n"
             "When it is ready it says so on standard output: \"rmon-agent: listening on ADDRESS:PORT\".\n"
             "SIGINT and SIGTERM end it with exit code 0; SIGHUP has it read the configuration file again, "
             "of\n"
             "which --allow takes effect at once. A failed start has exit code 1, a wrong command line 2.\n";
}
