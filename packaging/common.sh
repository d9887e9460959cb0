# shellcheck shell=bash
# What the packaging scripts share. Sourced by them, with `root` set to the project's folder.

# shellcheck source-path=SCRIPTDIR source=../tools/packages.sh
source "$root/tools/packages.sh"
dist=$root/dist

# The version as the program itself tells it.
version=$(sed -n 's/.*kVersion = "\(.*\)";/\1/p' "$root/design/version.h")
[[ -n $version ]] || { say "design/version.h names no version"; exit 1; }

# buildPrograms PRESET TARGET...: as a user gets them.
buildPrograms() {
  local preset=$1
  shift
  lockBuild "$root" "$preset"
  if [[ ! -f $root/build/$preset/build.ninja ]]; then
    configure "$root" "$preset" -DLORIVAN_TESTS=OFF || exit 1
  fi
  quietly "$root/build/$preset.log" cmake --build "$root/build/$preset" --target "$@" || exit 1
  unlockBuild
}

# copyBeside FOLDER: what lies beside the program.
copyBeside() {
  install -m 644 -- "$root/data/povinit.txt" "$1/"
  [[ -d $root/data/help ]] || return 0
  mkdir -p -- "$1/help"
  cp -R -- "$root/data/help/." "$1/help/"
  chmod -R u=rwX,go=rX -- "$1/help"
}
