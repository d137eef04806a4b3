# Sourced by the set-up scripts. Makes sure the Debian packages the build needs are
# there: installs what is missing when running as root or with sudo, otherwise stops
# with the exact line to run.
qav_ensure_packages() {
  local missing=() pkg
  for pkg in "$@"; do
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed" || missing+=("$pkg")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local line="apt-get install -y ${missing[*]}"
  echo "Missing Debian packages: ${missing[*]}" >&2
  if [ "$(id -u)" -eq 0 ]; then
    (apt-get install -y "${missing[@]}" || { apt-get update && apt-get install -y "${missing[@]}"; }) >&2 && return 0
  elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
    (sudo apt-get install -y "${missing[@]}" || { sudo apt-get update && sudo apt-get install -y "${missing[@]}"; }) >&2 && return 0
  fi
  echo "Install them with:  sudo $line" >&2
  exit 1
}

qav_require_commands() {
  local cmd
  for cmd in "$@"; do
    if ! command -v "$cmd" >/dev/null 2>&1; then
      echo "'$cmd' is needed. Install it with:  sudo apt-get install -y cmake g++" >&2
      exit 1
    fi
  done
}

# Configures and builds into $1 with the remaining arguments passed to cmake;
# builds only the targets listed in QAV_TARGETS when it is set.
qav_build() {
  local dir=$1; shift
  local generator=()
  command -v ninja >/dev/null 2>&1 && generator=(-G Ninja)
  if [ ! -f "$dir/CMakeCache.txt" ]; then
    cmake -S "$QAV_ROOT" -B "$dir" "${generator[@]}" "$@" >/dev/null
  else
    cmake "$dir" "$@" >/dev/null
  fi
  local targets=()
  [ -n "${QAV_TARGETS:-}" ] && targets=(--target $QAV_TARGETS)
  cmake --build "$dir" -j "$(nproc)" "${targets[@]}"
}
