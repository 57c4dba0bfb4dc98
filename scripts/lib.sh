# shellcheck shell=bash
# What the scripts share. Sourced, never run; it leaves the caller's working folder as it is.

root=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)
# shellcheck source=scripts/packages.sh
source "$root/scripts/packages.sh"

say() {
    printf '%s\n' "$*" >&2
}

fail() {
    say "$*"
    exit 1
}

# Runs a command with its output kept in a log, and shows the log only if the command fails.
quietly() {
    local log=$1 status=0
    shift
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if ((status != 0)); then
        cat "$log" >&2
        return "$status"
    fi
}

# Prints those of the named packages that are not installed, one a line.
missingPackages() {
    local installed name
    installed=$(dpkg-query --show --showformat='${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
    for name in "$@"; do
        if ! grep --quiet --line-regexp --fixed-strings "$name installed" <<<"$installed"; then
            printf '%s\n' "$name"
        fi
    done
}

# Whether this is a Debian release whose packages have the names in packages.sh.
isKnownSystem() {
    local ID='' VERSION_ID=''
    # shellcheck source=/dev/null
    source /etc/os-release 2>/dev/null || true
    [[ $ID == debian && ( $VERSION_ID == 12 || $VERSION_ID == 13 ) ]]
}

# Installs what is missing of the groups named (Build, Test, Format, Lint, Fuzz, Coverage, Package, CheckMacOS,
# Benchmark). On a system that is neither Debian 12 nor 13 it names them instead, and the caller uses what is there.
installPackages() {
    local group missing wanted=() asRoot=() log
    for group in "$@"; do
        local -n packages="packagesTo$group"
        wanted+=("${packages[@]}")
    done
    if ! isKnownSystem; then
        say "This is neither Debian 12 nor 13, so nothing is installed. Needed is what these packages contain: ${wanted[*]}"
        return 0
    fi
    mapfile -t missing < <(missingPackages "${wanted[@]}")
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            fail "Not root and no sudo here; please have these packages installed: ${missing[*]}"
        fi
        asRoot=(sudo)
    fi

    say "Installing: ${missing[*]}"
    log=$(mktemp)
    if ! { aptGet update && aptGet install --no-install-recommends --yes "${missing[@]}"; }; then
        rm -f "$log"
        fail "Could not install these packages: ${missing[*]}"
    fi
    rm -f "$log"
}

# Calls apt-get without questions. Its caller, installPackages, provides 'asRoot' and 'log'. Standard input
# stays the caller's: sudo may have to ask for a password.
aptGet() {
    local status=0
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=600 "$@" \
        >"$log" || status=$?
    if ((status != 0)); then
        cat "$log" >&2
    fi
    return "$status"
}

# Configures a preset if that was not done yet, if the presets changed since, or if the folder moved.
# Changes to the lists of sources or to a CMakeLists.txt are noticed by the build itself.
configure() {
    local preset=$1 folder="$root/build/$1" mark="$root/build/$1/.configured"
    if [[ -e $folder/build.ninja && ! $root/CMakePresets.json -nt $mark && $(cat "$mark") == "$root" ]]; then
        return 0
    fi
    say "Configuring: $preset"
    quietly "$folder/configure.log" cmake --fresh -S "$root" --preset "$preset" || return
    printf '%s\n' "$root" >"$mark"
}

# Shows on a terminal how far a build is: ninja's own lines, each in the place of the one before.
showSteps() {
    local line columns
    columns=$(tput cols 2>/dev/null) || columns=80
    while IFS= read -r line; do
        if [[ $line == \[*/*\]* ]]; then
            printf '\r\033[K%.*s' "$((columns - 1))" "$line" >&2
        fi
    done
    printf '\r\033[K' >&2
}

# Builds with the output kept in a log, which is shown if the build fails. On a terminal its steps are shown, too.
runBuild() {
    local log=$1
    shift
    if [[ ! -t 2 ]]; then
        quietly "$log" cmake --build "$@"
    elif ! cmake --build "$@" 2>&1 </dev/null | tee "$log" | showSteps; then
        cat "$log" >&2
        return 1
    fi
}

# Configures and builds a preset, or only the targets named after it. Two callers take turns.
build() {
    local preset=$1 folder="$root/build/$1"
    shift
    if ! mkdir -p "$folder" 2>/dev/null || [[ ! -w $folder ]]; then
        fail "Cannot write to $folder, which the build needs"
    fi
    {
        flock 9
        configure "$preset" || fail "Configuring failed: $preset"
        say "Building: $preset"
        runBuild "$folder/build.log" "$folder" --parallel "$(nproc)" ${@:+--target "$@"} \
            || fail "Building failed: $preset"
    } 9>"$folder/.lock"
}
