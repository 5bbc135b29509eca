# shellcheck shell=bash
# Sourced by the scripts beside it: finds out which Debian packages are missing and installs those, and only those.

# packages_for PURPOSE...: the names that scripts/packages lists for these purposes.
packages_for() {
  local list purpose
  list="$(dirname "${BASH_SOURCE[0]}")/../packages"
  for purpose in "$@"; do
    awk -v purpose="$purpose" '$1 == purpose { print $2 }' "$list"
  done
}

# missing_packages PACKAGE...: those of the packages that are not installed.
missing_packages() {
  local package
  for package in "$@"; do
    if ! dpkg -s "$package" 2>/dev/null | grep -q '^Status: install ok installed'; then
      echo "$package"
    fi
  done
}

# need_packages PACKAGE...: installs what is missing. Fails with a message that says what to do if it cannot.
need_packages() {
  local missing=() as_root=()
  if ! command -v dpkg >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is no Debian system; make sure that you have what these packages bring: $*" >&2
    return 0
  fi
  mapfile -t missing < <(missing_packages "$@")
  if [ "${#missing[@]}" -eq 0 ]; then
    return 0
  fi
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These packages are missing, and installing them needs root or sudo. As root, run:" >&2
      echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]} ..." >&2
  "${as_root[@]}" apt-get update -qq >&2 &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null && return 0
  echo "apt-get could not install ${missing[*]}; is the network up?" >&2
  return 1
}
