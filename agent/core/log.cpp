// SPDX-License-Identifier: MIT
#include "agent/core/log.h"

#include <cstdio>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/** Whether standard error is the journal's: a child may have inherited the variable, and write elsewhere. */
bool is_journal()
{
    const char *stream = std::getenv("JOURNAL_STREAM");
    struct stat errors;
    if (!stream || fstat(STDERR_FILENO, &errors) != 0)
        return false;
    return std::to_string(errors.st_dev) + ':' + std::to_string(errors.st_ino) == stream;
}

} // namespace

void say(log_level level, const std::string &line)
{
    static const bool journal = is_journal();
    // One write for the whole line, so that lines of several processes do not mix.
    std::string text = journal ? '<' + std::to_string(static_cast<int>(level)) + '>' : "rmon-agent: ";
    text += line + '\n';
    std::fwrite(text.data(), 1, text.size(), stderr);
}
