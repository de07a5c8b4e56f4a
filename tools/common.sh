# Shared by the project's commands; sourced, never run.
# Installs what a bare Debian or Ubuntu machine is missing, and says so.

set -euo pipefail

project_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache_dir=${ZEVRIN_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zevrinutils}
wine_root=$cache_dir/wine32-root

say() { printf '== %s\n' "$*" >&2; }

die() {
    printf '\n%s\n' "$*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "'$*' needs root: run this command once as root, or install sudo."
    fi
}

# Installs the named Debian packages that are not there yet.
need_packages() {
    command -v dpkg-query >/dev/null ||
        die "This script installs Debian packages, and this is no Debian or Ubuntu machine. Install the counterparts of: $*"
    local package missing=()
    for package in "$@"; do
        dpkg-query -W -f '${Status}\n' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "installing: ${missing[*]}"
    as_root apt-get update -qq ||
        die "The package lists could not be read: check this machine's apt sources and its network."
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        die "apt could not install: ${missing[*]}. Its message is above."
}

need_linux_build() {
    need_packages build-essential cmake ninja-build ccache python3 libspdlog-dev libfmt-dev libcli11-dev googletest \
        libacl1-dev libcurl4-openssl-dev libsqlite3-dev libssl-dev uuid-dev
}

need_windows_build() {
    need_linux_build
    need_packages g++-mingw-w64-i686-posix
}

# What the tests use beside the compiler.
need_test_parts() {
    need_packages acl curl dnsmasq-base fonts-dejavu-core iproute2 libgtk-3-dev nginx-light openssl python3 squid util-linux \
        xdotool xvfb
}

# A Wine that runs 32-bit programs: the machine's own, or one in a root directory of its own.
need_wine() {
    "$project_root/tools/wine" --check && return 0
    if (. /etc/os-release && [ "$ID" = debian ]); then
        need_packages debootstrap
        as_root env ZEVRIN_CACHE="$cache_dir" "$project_root/tools/make-wine-root"
    else
        as_root dpkg --add-architecture i386
        need_packages wine wine32:i386
    fi
    "$project_root/tools/wine" --check ||
        die "Wine is installed, but it does not start a 32-bit program on this machine."
}

# Configures and builds a preset. Arguments: preset, then targets (all if none).
build_preset() {
    local preset=$1
    shift
    say "building: $preset"
    cd "$project_root"
    mkdir -p build
    cmake --preset "$preset" >"$project_root/build/$preset.configure.log" 2>&1 ||
        { cat "$project_root/build/$preset.configure.log" >&2; die "CMake could not configure the preset '$preset'."; }
    cmake --build --preset "$preset" ${1:+--target "$@"} >&2 || die "The build of '$preset' failed."
}
