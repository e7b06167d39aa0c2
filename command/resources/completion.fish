# SPDX-License-Identifier: MIT
# Completion of rmon for fish.
function __rmon_complete
    set -l words (commandline -opc)
    set -l index (count $words)
    set -l current (commandline -ct)
    set -l call $words[1] _complete --no-interaction -sbash -c$index
    for word in $words $current
        test -n "$word"; and set -a call "-i$word"
    end
    $call 2>/dev/null
end

complete -c rmon -f -a '(__rmon_complete)'
