# Shared by the project's commands; sourced, never run.
# Installs what a bare Debian or Ubuntu machine is missing, and says so.

set -euo pipefail

project_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache_dir=${ZEVRIN_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zevrinutils}
wine_root=$cache_dir/wine-i386
emulator_file=$cache_dir/qemu-i386

say() { printf '== %s\n' "$*" >&2; }

die() {
    printf '\n%s\n' "$*" >&2
    exit 1
}

# A command's help is the comment that it begins with.
help_text() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"; }

refuse_arguments() {
    help_text >&2
    exit 2
}

case ${1:-} in
    -h | --help)
        help_text
        exit
        ;;
esac

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "'$*' needs root: run this command once as root, or install sudo."
    fi
}

# Prints at each tenth how many of TOTAL lines match a pattern; without TOTAL, apt's own account tells it.
show_progress() {
    local name=$1 pattern=$2 total=${3:-0} count=0 shown=0 line
    while read -r line; do
        [[ ! $line =~ ([0-9]+)\ newly\ installed ]] || total=${BASH_REMATCH[1]}
        [[ $total != 0 && $line =~ $pattern ]] || continue
        count=$((count + 1))
        [ $((10 * count / total)) -gt "$shown" ] || continue
        shown=$((10 * count / total))
        echo "   $name: $count of $total" >&2
    done
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
    as_root env DEBIAN_FRONTEND=noninteractive LC_ALL=C \
        apt-get install -y --no-install-recommends "${missing[@]}" | show_progress installed '^Setting up ' ||
        die "apt could not install: ${missing[*]}. Its message is above."
}

# The mirror that has this machine's own packages.
own_mirror() {
    local mirror
    mirror=$(find_mirror)
    if [ -z "$mirror" ]; then   # apt knows no suite whose list it does not have
        as_root apt-get update -qq
        mirror=$(find_mirror)
    fi
    [ -n "$mirror" ] || die "This machine's apt sources name no mirror of its own packages."
    echo "$mirror"
}

find_mirror() {
    . /etc/os-release
    apt-get indextargets 'Created-By: Packages' --format '$(RELEASE) $(CODENAME) $(COMPONENT) $(REPO_URI)' |
        awk -v own="$VERSION_CODENAME" '$3 == "main" && ($1 == own || $2 == own) && !found++ { print $4 }'
}

need_linux_build() {
    need_packages build-essential cmake ninja-build ccache python3 libspdlog-dev libfmt-dev libcli11-dev googletest \
        libacl1-dev libcurl4-openssl-dev libsqlite3-dev libssl-dev uuid-dev
}

# x86 or x64
need_windows_build() {
    local processor=x86-64
    [ "$1" = x64 ] || processor=i686
    need_linux_build
    need_packages "g++-mingw-w64-$processor-posix"
}

# The programs that the tests use beside the compiler.
need_test_parts() {
    need_packages acl curl dnsmasq-base fonts-dejavu-core iproute2 libgtk-3-dev nginx-light openssl python3 squid util-linux \
        xdotool xvfb
}

# A Wine that runs the programs of a target, x86 or x64. Where this machine cannot run them, exits with 77.
need_wine() {
    "$project_root/tools/prepare-wine" "$1" || exit
}

# The smallest 32-bit program: its header, and exit(42) in three instructions.
write_32_bit_program() {
    local program=$cache_dir/exit-42
    [ ! -e "$program" ] || return 0
    printf %b '\x7fELF\x01\x01\x01\0\0\0\0\0\0\0\0\0\x02\0\x03\0\x01\0\0\0\x54\x80\x04\x08\x34\0\0\0\0\0\0\0' \
        '\0\0\0\0\x34\0\x20\0\x01\0\0\0\0\0\0\0' \
        '\x01\0\0\0\0\0\0\0\0\x80\x04\x08\0\x80\x04\x08\x60\0\0\0\x60\0\0\0\x05\0\0\0\0\x10\0\0' \
        '\xb8\x01\0\0\0\xbb\x2a\0\0\0\xcd\x80' >"$program.new"
    chmod +x "$program.new"
    mv "$program.new" "$program"
}

# Succeeds if this machine runs 32-bit programs by itself, which takes a millisecond to see.
runs_32_bit() {
    local status=0
    "$cache_dir/exit-42" 2>/dev/null || status=$?
    [ "$status" = 42 ]
}

# Succeeds if 32-bit programs go through our emulator.
is_emulated() {
    [ -n "${ZEVRIN_EMULATE:-}" ] || ! runs_32_bit
}

# The folder in which the programs of x86 or x64 have what Windows keeps of a machine. Emulated ones have one of their
# own, because their services are others.
wine_prefix() {
    local prefix=$project_root/build/wine-$1
    [ "$1" = x64 ] || ! is_emulated || prefix+=-emulated
    echo "$prefix"
}

# In namespaces of its own, makes the kernel hand 32-bit programs to the emulator $1. It is opened now, since no root
# directory that it runs programs in has it, and by a number, since the kernel takes only short names without colons.
# shellcheck disable=SC2034
register_emulator='
    mount -t binfmt_misc none /proc/sys/fs/binfmt_misc
    exec 9<"$1"
    magic="\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x03\x00"
    mask="\xff\xff\xff\xff\xff\xfe\xfe\xfc\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff"
    printf %s ":i386:M::$magic:$mask:/proc/self/fd/9:OCF" >/proc/sys/fs/binfmt_misc/register'

# In CI no warning passes. Elsewhere a compiler newer than ours may find some.
warnings_are_errors() {
    [ "${CI:-}" = true ]
}

# Configures and builds a preset. Arguments: preset, then targets (all if none). CXX names another compiler than g++.
build_preset() {
    local preset=$1 fresh=()
    shift
    say "building: $preset"
    cd "$project_root"
    mkdir -p build
    # Another compiler wants a new start.
    [ "$(cat "build/$preset.compiler" 2>/dev/null)" = "${CXX:-}" ] || fresh=(--fresh)
    cmake --preset "$preset" "${fresh[@]}" "-DZEVRIN_WARNINGS_AS_ERRORS=$(warnings_are_errors && echo ON || echo OFF)" \
        >"$project_root/build/$preset.configure.log" 2>&1 ||
        { cat "$project_root/build/$preset.configure.log" >&2; die "CMake could not configure the preset '$preset'."; }
    echo "${CXX:-}" >"build/$preset.compiler"
    cmake --build --preset "$preset" ${1:+--target "$@"} >&2 || die "The build of '$preset' failed."
}
