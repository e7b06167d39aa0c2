# SPDX-License-Identifier: MIT
# Shared by the scripts of this folder: sourced, never run.
set -euo pipefail

# A script's opening comment says, below its licence, what it does and how it is called: --help shows it.
help() {
    sed -n '3,/^[^#]/s/^# \{0,1\}//p' "$0"
}

# For arguments that a script doesn't take: how it is called.
misused() {
    help | sed -n '/^usage:/,/^$/p' >&2
    exit 2
}

if [[ ${1:-} == --help || ${1:-} == -h ]]; then
    help
    exit
fi

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/.build
: "${PHP_CONFIG:=php-config}"
unchecked=77 # what a check ends with that can't be made on this machine

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# The release of the PHP that PHP_CONFIG names, as packages and commands have it in their names: 8.2.
php_release() {
    "$PHP_CONFIG" --version | cut -d . -f 1,2
}

# The PHP that the module is built for, which need not be the first one in the path.
php_binary() {
    "$PHP_CONFIG" --php-binary
}

# Files of the engine that only its development package brings (gen_stub.php, run-tests.php).
php_build_dir() {
    local dir
    dir=$("$PHP_CONFIG" --extension-dir)/build
    [[ -d $dir ]] || dir=$("$PHP_CONFIG" --prefix)/lib/php/build
    printf '%s\n' "$dir"
}

# Runs a command quietly: what it printed is shown only when it fails.
quietly() {
    local log
    log=$(mktemp)
    if "$@" >"$log" 2>&1 </dev/null; then
        rm -f "$log"
    else
        local code=$?
        cat "$log" >&2
        rm -f "$log"
        return "$code"
    fi
}

# Shows how far something is, from lines "DONE TOTAL TEXT": one line that changes on a terminal, elsewhere a line for
# each fifth that is done. On a terminal the cursor stays before the line, so that a message of others covers it.
progress() {
    local count total text shown=0
    while read -r count total text; do
        ((total > 0)) || continue
        ((5 * count / total >= shown)) || shown=0 # it began anew
        if [[ -t 1 ]]; then
            printf '\e[K%3d %% %s\r' "$((100 * count / total))" "${text:0:70}"
        elif ((5 * count / total > shown)); then
            shown=$((5 * count / total))
            printf '%3d %% %s\n' "$((100 * count / total))" "$text"
        fi
    done
    [[ ! -t 1 ]] || printf '\e[K'
}
