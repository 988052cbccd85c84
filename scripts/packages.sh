# shellcheck shell=bash
# Sourced, not run. Installs what the lists in scripts/packages/ name and the machine lacks.

packages_dir="$(cd "$(dirname "${BASH_SOURCE[0]}")/packages" && pwd)"

# install_packages LIST...: runs only one dpkg-query when everything is installed already.
install_packages() {
    local wanted installed missing=() package
    wanted="$(for list in "$@"; do sed 's/#.*//' "$packages_dir/$list.txt"; done | tr -s ' \t' '\n' | sort -u)"
    if ! command -v dpkg-query > /dev/null; then
        echo "Not a Debian system; these packages or their equivalents are needed:" >&2
        echo "${wanted//$'\n'/ }" >&2
        return 0
    fi
    # dpkg-query fails when it does not know a package, which is then missing.
    # shellcheck disable=SC2086
    installed="$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2> /dev/null |
        sed -n 's/^installed //p' | sort -u || true)"
    for package in $wanted; do
        grep -qxF -- "$package" <<< "$installed" || missing+=("$package")
    done
    if [[ ${#missing[@]} -eq 0 ]]; then
        return 0
    fi
    echo "Installing ${#missing[@]} packages: ${missing[*]}" >&2
    local as_root=()
    if [[ "$(id -u)" -ne 0 ]]; then
        if ! command -v sudo > /dev/null; then
            echo "There is no sudo here. Install them as root, then start this again:" >&2
            echo "  su -c 'apt-get update && apt-get install --no-install-recommends ${missing[*]}'" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    # Old package lists may still be good enough; the installation decides.
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -o DPkg::Lock::Timeout=600 update >&2 || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y -o DPkg::Lock::Timeout=600 install --no-install-recommends "${missing[@]}" >&2
}
