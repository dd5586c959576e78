#!/usr/bin/env bash
# Installs the packages of build/package, or a folder, in a bare Debian 12 tree, uses and removes them (needs root
# and debootstrap): packages.sh [FOLDER]
set -euo pipefail
cd "$(dirname "$0")/../.."
packages=$(realpath "${1:-build/package}")
root=$(mktemp -d)
clean_up() {
  ! mountpoint -q "$root/proc" || umount "$root/proc"  # debootstrap's, when it is cut short
  rm -rf --one-file-system "$root" "$root.log"
}
trap clean_up EXIT

inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C "$@"; }
quietly() { "$@" >"$root.log" 2>&1 || { cat "$root.log" && echo "FAILED: $*" && exit 1; }; }
step() { echo "== $*"; }
files() { (cd "$root" && find . -xdev ! -path './var/*' ! -path './tmp/*' ! -path './etc/ld.so.cache' | sort); }

step 'a bare Debian 12'
quietly debootstrap --variant=minbase --include=gcc,g++,cmake,make,pkgconf,python3 bookworm "$root"
files >"$root/tmp/before"

step 'installing'
find "$packages" -name '*.deb' ! -name '*-dbgsym_*' -exec cp -t "$root/tmp" {} +
quietly inside sh -c 'dpkg -i /tmp/*_*.deb'

step 'the program'
inside orvex-parse --version
inside orvex-parse ip --prefix 10.0.0.0/8
inside orvex-parse --profile /usr/share/orvex-parse/profiles/virtual-fpcs.toml interface --json eth-1050/1/0
inside ls /usr/share/man/man1/orvex-parse.1.gz /usr/share/man/man3/parse_ipaddr.3.gz

step 'C and C++ programs: pkg-config, -static, find_package'
sed -n '/^    #include <orvex/,/^    }/s/^    //p' README.md >"$root/tmp/program.c"
cp "$root/tmp/program.c" "$root/tmp/program.cpp"
cp tests/consumers/CMakeLists.txt "$root/tmp"
# shellcheck disable=SC2016 # expanded inside
inside sh -ec 'cd /tmp
  cc -std=c99 -o c program.c $(pkg-config --cflags --libs orvex-parse) && ./c
  c++ -std=c++20 -o cpp program.cpp $(pkg-config --cflags --libs orvex-parse) && ./cpp
  cc -static -o static program.c $(pkg-config --static --cflags --libs orvex-parse) && ./static
  cmake -DPROGRAM=/tmp/program -B found . >/dev/null && cmake --build found >/dev/null && found/program_c && found/program_cpp'

step 'Python'
inside python3 -c 'import orvex_parse; print(orvex_parse.ip("10.0.0.0/8", prefix=True))'

step 'removing'
quietly inside dpkg --purge python3-orvex-parse orvex-parse liborvex-parse-dev liborvex-parse1 liborvex-platform-stand-in
files | diff "$root/tmp/before" -
step 'nothing remains'
