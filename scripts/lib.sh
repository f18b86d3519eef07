# Shared by the scripts beside it: where the tree is, how much to run at once, how to talk to the
# person, and the sanitizers' settings. Sourced, never run. It assumes bash with strict settings.

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# The distribution's own Python: only it sees the distribution's desktop bindings.
PYTHON=/usr/bin/python3

say() { printf '== %s\n' "$*"; }

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# A compiler takes up to 1.5 GiB here: as many as there are cores, fewer where memory is short.
jobs_at_once() {
    local cores memory
    cores="$(nproc)"
    memory="$(awk '/^MemAvailable:/ { print int($2 / 1572864) }' /proc/meminfo)"
    if ((memory < 1)); then memory=1; fi
    echo "${QUARV_JOBS:-$((memory < cores ? memory : cores))}"
}

# Qt refuses to guess a character set, and ccache wants a home: both may be missing in a bare
# environment.
if [[ -z "${LC_ALL:-}${LC_CTYPE:-}${LANG:-}" ]]; then export LC_ALL=C.UTF-8; fi
if [[ -z "${HOME:-}" ]]; then
    HOME="$(getent passwd "$(id -u)" | cut -d: -f6)"
    export HOME="${HOME:-/tmp}"
fi

# What one clone has compiled serves every other, wherever it lies.
export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$ROOT}" CCACHE_NOHASHDIR="${CCACHE_NOHASHDIR:-1}"

# The one place of the sanitizers' settings; they do nothing to a plain program.
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1:detect_stack_use_after_return=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
export LSAN_OPTIONS="${LSAN_OPTIONS:-suppressions=$ROOT/scripts/lsan.supp:print_suppressions=0}"
