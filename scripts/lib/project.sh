# What the scripts share: finding the project, installing what is missing, configuring and building. Sourced by bash.

project_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# What one build folder or clone has compiled need not be compiled again in another.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$project_root} CCACHE_NOHASHDIR=1
# Also with a precompiled header, which ccache trusts only when told to; it is large, so it is read once and not for each source.
export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_INODECACHE=1

say() { printf '\n==> %s\n' "$*"; }
die() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

# The package list without comments.
packages_of() { sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$1"; }

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Installs the packages of a list that this machine lacks, as root or through sudo, without questions.
install_missing_packages() {
    local list=$1 missing=() package as_root=()
    command -v dpkg-query >/dev/null || die "this machine has no Debian packages; install by hand what $list names"
    while read -r package; do
        is_installed "$package" || missing+=("$package")
    done < <(packages_of "$list")
    [ ${#missing[@]} -gt 0 ] || return 0

    say "Installing ${#missing[@]} Debian packages: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "missing packages: ${missing[*]}; install them as root, or install sudo"
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null ||
        die "apt-get could not install the packages above; check this machine's package sources"
}

# Installs what a preset needs: what all need, and what is only its own.
install_packages_of_preset() {
    local list
    install_missing_packages "$project_root/scripts/debian-packages.txt"
    list=$project_root/scripts/debian-packages-$1.txt
    [ ! -f "$list" ] || install_missing_packages "$list"
}

# What a cross-compiled program is linked with, and what it runs in, which is this machine's own.
prepare_armhf() {
    say "Filling the sysroot"
    scripts/make-armhf-sysroot
    build_preset dev mpl-sandbox mpl-junit mpl_simulated_stack
}

# Configures (only when needed) and builds a preset; arguments after it are targets other than its own.
build_preset() {
    local preset=$1 target targets=()
    shift
    cd "$project_root"
    [ "$preset" != armhf ] || prepare_armhf
    if [ ! -f "build/$preset/build.ninja" ]; then
        say "Configuring preset $preset"
        cmake --preset "$preset"
    fi
    for target in "$@"; do targets+=(--target "$target"); done
    say "Building preset $preset"
    cmake --build --preset "$preset" "${targets[@]}"
}
