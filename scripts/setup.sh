# shellcheck shell=bash
# Sourced by the other scripts: goes to the project's root and installs what is missing.

CDPATH="" cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# install_missing PACKAGE...: the Debian packages of which the machine has none yet.
install_missing() {
    command -v apt-get >/dev/null || {
        echo "This is no Debian, so nothing is installed. There it would be: $*"
        return
    }
    local missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' \
            || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "Packages are missing. Let root install them, then run this again:" >&2
            echo "    apt-get install ${missing[*]}" >&2
            exit 1
        }
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# shellcheck disable=SC2034 # used by the scripts that source this one
build_packages=(g++ cmake ninja-build ccache qt6-base-dev libgl-dev fonts-dejavu-core pkg-config
    libfftw3-dev)
