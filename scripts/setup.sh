# Sourced by the other scripts: goes to the project's root and installs what is missing.

cd "$(dirname "${BASH_SOURCE[0]}")/.."

# install_missing PACKAGE...: the Debian packages of which the machine has none yet.
install_missing() {
    local missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' \
            || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These Debian packages are missing: ${missing[*]}" >&2
            echo "Install them as root, then run this again." >&2
            exit 1
        }
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}"
}

build_packages=(g++ cmake ninja-build ccache qt6-base-dev libgl-dev fonts-dejavu-core)
