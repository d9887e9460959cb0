# shellcheck shell=bash
# What the packaging scripts share. Sourced by them, with `root` set to the project's folder.

# shellcheck source-path=SCRIPTDIR source=../tools/packages.sh
source "$root/tools/packages.sh"
dist=$root/dist

# buildPrograms PRESET TARGET...: as a user gets them. Sets `version` and `releaseDate` to theirs.
buildPrograms() {
  local preset=$1
  shift
  lockBuild "$root" "$preset"
  if [[ ! -f $root/build/$preset/build.ninja ]]; then
    configure "$root" "$preset" -DLORIVAN_TESTS=OFF || exit 1
  fi
  quietly "$root/build/$preset.log" cmake --build "$root/build/$preset" --target "$@" || exit 1
  unlockBuild
  version=$(sed -n 's/^LORIVAN_VERSION:INTERNAL=//p' "$root/build/$preset/CMakeCache.txt")
  # shellcheck disable=SC2034
  releaseDate=$(sed -n 's/^LORIVAN_DATE:INTERNAL=//p' "$root/build/$preset/CMakeCache.txt")
}

# installPrograms PRESET FOLDER [PREFIX]: programs and everything that belongs to them. The programs lose their symbols.
installPrograms() {
  quietly "$root/build/$1.log" env DESTDIR="$2" cmake --install "$root/build/$1" --prefix "${3:-/}" --strip || exit 1
  chmod -R u=rwX,go=rX -- "$2"
}

# notice PACKAGE: what it says about its authors and licences, with the line ends of Windows.
notice() { sed 's/$/\r/' "/usr/share/doc/$1/copyright"; }

# installForWindows FOLDER: the programs with what belongs to them, and the notices of what is linked into them.
installForWindows() {
  mkdir -p -- "$1/licences"
  installPrograms mingw "$1"
  sed 's/$/\r/' "$root/docs/third-party.md" >"$1/third-party.txt"
  notice libz-mingw-w64-dev >"$1/licences/zlib.txt"
  notice mingw-w64-x86-64-dev >"$1/licences/mingw-w64.txt"
  notice g++-mingw-w64-x86-64-posix >"$1/licences/gcc.txt"
  find "$1" -exec touch -d "$releaseDate UTC" {} +
}
