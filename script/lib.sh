# Shared by the scripts of this folder: sourced, never run.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/.build
: "${PHP_CONFIG:=php-config}"

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
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
