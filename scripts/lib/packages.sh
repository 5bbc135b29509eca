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

# How many seconds to wait for another apt or dpkg that is at work.
apt_patience=900

# patient_apt_get ARGUMENT...: apt-get as root, quiet, after any other apt has ended. apt's own waiting covers the locks of
# dpkg only; on those of the package lists and of the archive directory it fails at once, so it is called again.
patient_apt_get() {
  local as_root=() said status deadline=$((SECONDS + apt_patience)) waiting=
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  while true; do
    status=0
    said=$("${as_root[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive \
      apt-get -o DPkg::Lock::Timeout="$((deadline > SECONDS ? deadline - SECONDS : 0))" "$@" 2>&1 >/dev/null) || status=$?
    if [ "$status" -eq 0 ] || ! grep -q '^E: Could not get lock' <<<"$said"; then
      break
    fi
    if [ "$SECONDS" -ge "$deadline" ]; then
      said+=$'\n'"Another apt has kept its lock for $apt_patience seconds."
      break
    fi
    [ -n "$waiting" ] || echo "Another apt is at work; waiting for it ..." >&2
    waiting=yes
    sleep 1
  done
  [ -z "$said" ] || printf '%s\n' "$said" >&2
  return "$status"
}

# need_packages PACKAGE...: installs what is missing. Fails with a message that says what to do if it cannot.
need_packages() {
  local missing=()
  if ! command -v dpkg >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is no Debian system; make sure that you have what these packages bring: $*" >&2
    return 0
  fi
  mapfile -t missing < <(missing_packages "$@")
  if [ "${#missing[@]}" -eq 0 ]; then
    return 0
  fi
  if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    echo "These packages are missing, and installing them needs root or sudo. As root, run:" >&2
    echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
    return 1
  fi
  echo "Installing ${missing[*]} ..." >&2
  patient_apt_get update -qq &&
    patient_apt_get install -y -qq --no-install-recommends "${missing[@]}" && return 0
  echo "apt-get could not install ${missing[*]}; what it said stands above. Is the network up?" >&2
  return 1
}
