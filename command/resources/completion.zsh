#compdef rmon
# SPDX-License-Identifier: MIT
# Completion of rmon for zsh.
_rmon() {
    local -a call found plain open
    local word
    call=(${words[1]} _complete --no-interaction -sbash -c$((CURRENT - 1)))
    for word in ${words[@]}; do
        [[ -n $word ]] && call+=("-i$word")
    done
    found=("${(@f)$(${call[@]} 2>/dev/null)}")
    for word in ${found[@]}; do
        case $word in
        *=) open+=("$word") ;;
        ?*) plain+=("$word") ;;
        esac
    done
    compadd -- ${plain[@]}
    compadd -S '' -- ${open[@]}
}

if [[ $zsh_eval_context[-1] == loadautofunc ]]; then
    _rmon "$@"
else
    compdef _rmon rmon
fi
