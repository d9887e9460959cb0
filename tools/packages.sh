# shellcheck shell=bash disable=SC2034
# What building, running, testing and packaging need, as Debian packages, and how to get it. Sourced by run and test.

runPackages=(g++ cmake ninja-build qt6-base-dev libgl1-mesa-dev zlib1g-dev fonts-dejavu-core)
testPackages=(libgtest-dev googletest clang-format clang-tidy)
# Builds the Windows program and runs its tests.
windowsPackages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine wine64)
# Foreign readers of the exported files, for the tests that ask them.
readerPackages=(povray povray-includes admesh assimp-utils python3-ezdxf librsvg2-bin libxml2-utils emf2svg
  view3dscene qpdf poppler-utils mupdf-tools)
# What packaging/ needs beyond that, and what reads the packages.
debPackages=(dpkg-dev python3)
debCheckers=(lintian appstream desktop-file-utils man-db)
zipPackages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev cmake ninja-build)
installerPackages=(nsis)

# say TEXT...: to the error output, so that a program's own output stays clean.
say() { printf '%s\n' "$*" >&2; }

# quietly LOG COMMAND...: its output goes to LOG and is shown only when the command fails.
quietly() {
  local log=$1
  shift
  if "$@" >"$log" 2>&1 </dev/null; then return 0; fi
  tail -n 60 -- "$log" >&2
  say "This failed: $*"
  say "The whole log: $log"
  return 1
}

# ensurePackages LOG NAME...: installs what is missing. Elsewhere than on Debian and its kin it does nothing,
# and the build says what it misses.
ensurePackages() {
  local log=$1 name status missing=()
  shift
  command -v dpkg-query >/dev/null || return 0
  local -A installed=()
  while read -r name status; do
    [[ $status == installed ]] && installed[$name]=yes
  done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null)
  for name in "$@"; do
    [[ ${installed[$name]:-} ]] || missing+=("$name")
  done
  ((${#missing[@]})) || return 0

  local asRoot=()
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      say "These packages are missing, and only root can install them: ${missing[*]}"
      return 1
    fi
    asRoot=(sudo)
    [[ -t 0 ]] || asRoot=(sudo -n)
    "${asRoot[@]}" true || return 1
  fi
  # Only some of apt's locks can be waited for; two of us at the same time wait here.
  asRoot+=(flock /var/cache/apt env DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=300)
  say "Installing ${#missing[@]} packages: ${missing[*]}"
  # The lists may be old or, on a fresh machine, not there at all.
  "${asRoot[@]}" update >"$log" 2>&1 </dev/null || say "The package lists could not be brought up to date."
  quietly "$log" "${asRoot[@]}" install --no-install-recommends "${missing[@]}"
}

# configure ROOT PRESET OPTION...: makes build/PRESET ready, anew when the project has moved since.
configure() {
  local root=$1 preset=$2
  shift 2
  local build=$root/build/$preset
  if [[ -f $build/CMakeCache.txt ]] &&
    ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$build/CMakeCache.txt"; then
    rm -rf -- "$build"
  fi
  (cd -- "$root" && quietly "$build.log" cmake --preset "$preset" "$@")
}

# lockBuild ROOT PRESET: waits until nobody else builds there; freed by unlockBuild or at the end.
lockBuild() {
  mkdir -p -- "$1/build"
  exec 9>"$1/build/$2.lock"
  flock -n 9 || { say "Waiting for another build to end ..." && flock 9; }
}
unlockBuild() { exec 9>&-; }
