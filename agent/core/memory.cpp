// SPDX-License-Identifier: MIT
#include "agent/core/memory.h"

#include <algorithm>
#include <fstream>

#include <sys/sysinfo.h>

namespace {

/** The lowest limit of a control group and of those above it, each of which has it in a file of this name. */
uint64_t lowest_limit(const std::string &root, std::string group, const std::string &name)
{
    uint64_t lowest = UINT64_MAX;
    for (;;) {
        std::string file = root;
        file.append(group).append("/").append(name);
        uint64_t limit = 0; // "max" is no number
        if (std::ifstream(file) >> limit)
            lowest = std::min(lowest, limit);
        const std::size_t slash = group.rfind('/');
        if (slash == group.npos)
            return lowest;
        group.resize(slash);
    }
}

/** Whether one of the names that stand between commas is this one. */
bool is_listed(const std::string &list, const std::string &name)
{
    return (',' + list + ',').find(',' + name + ',') != list.npos;
}

} // namespace

uint64_t machine_memory(const std::string &membership, const std::string &groups)
{
    struct sysinfo machine;
    sysinfo(&machine);
    uint64_t octets = uint64_t{machine.totalram} * machine.mem_unit;
    // Lines of "number:controllers:group"; the one without controllers is that of the unified hierarchy.
    std::ifstream lines(membership);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t controllers = line.find(':') + 1;
        const std::size_t group = line.find(':', controllers) + 1;
        if (controllers == 0 || group == 0)
            continue;
        const std::string of = line.substr(controllers, group - 1 - controllers);
        if (of.empty())
            octets = std::min(octets, lowest_limit(groups, line.substr(group), "memory.max"));
        else if (is_listed(of, "memory"))
            octets = std::min(
                octets, lowest_limit(groups + "/memory", line.substr(group), "memory.limit_in_bytes"));
    }
    return octets;
}

std::size_t usual_memory()
{
    // A machine of 32 bits may have more than an address tells.
    return std::clamp<uint64_t>(machine_memory() / 4, smallest_memory, SIZE_MAX / 2);
}
