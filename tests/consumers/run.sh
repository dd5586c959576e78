#!/usr/bin/env bash
# Uses the library in each way in which programs do, and builds it in two places to compare them:
# run.sh BUILD, a release build of this tree.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export CMAKE_GENERATOR=Ninja
unset CMAKE_BUILD_TYPE CMAKE_PREFIX_PATH DESTDIR LD_LIBRARY_PATH PKG_CONFIG_PATH

quietly() { "$@" >"$scratch/log" 2>&1 || { cat "$scratch/log" && echo "FAILED: $*" && exit 1; }; }
step() { echo "-- $*"; }
same() { cmp "$1" "$2" || { echo "FAILED: $1 differs from $2" && exit 1; }; }

# The program of README.md, as C and as C++.
sed -n '/^    #include <orvex/,/^    }/s/^    //p' README.md >"$scratch/program.c"
cp "$scratch/program.c" "$scratch/program.cpp"
expected='2001:0db8:0000:0000:0000:0000:0000:0000/0032'
prints_it() { [[ $("$@") == "$expected" ]] || { echo "FAILED: $*" && exit 1; }; }
# compile NAME OPTION…: both programs, as $scratch/NAME-c and $scratch/NAME-cpp.
compile() {
  local strict=(-Wall -Wextra -pedantic -Werror)
  quietly cc -std=c99 "${strict[@]}" -o "$scratch/$1-c" "$scratch/program.c" "${@:2}"
  quietly c++ -std=c++20 "${strict[@]}" -o "$scratch/$1-cpp" "$scratch/program.cpp" "${@:2}"
  prints_it "$scratch/$1-c"
  prints_it "$scratch/$1-cpp"
}

# identity FILE: what a generated header says that the library was built from.
identity() { sed -n 's/^#define ORVEX_BUILD "\(.*\)"/\1/p' "$1"; }

# A copy of the tree without its repository, in a folder with a longer name and in another's repository.
tree=$scratch/foreign/repository/orvex
mkdir -p "$tree"
./dev sources | xargs -0 cp --parents -t "$tree"
git init -q "$scratch/foreign"
git -C "$scratch/foreign" -c user.name=other -c user.email=other commit -q --allow-empty -m other
identity=$(identity "$build/generated/build_identity.h")

step 'the build identity, of an archive and in a foreign repository'
if [[ -e .git ]]; then
  git archive HEAD cmake | tar -x -C "$scratch"
  quietly cmake -D SOURCE_DIR="$scratch" -D HEADER="$scratch/archived.h" -P "$scratch/cmake/build_identity.cmake"
  [[ $(identity "$scratch/archived.h") == "$(git rev-parse --short=12 HEAD)" ]]
fi
quietly cmake -D SOURCE_DIR="$tree" -D HEADER="$scratch/foreign.h" -P cmake/build_identity.cmake
[[ ! -e .git || $(identity "$scratch/foreign.h") == unknown ]]

step 'two builds of the shared libraries are equal'
quietly cmake -S "$tree" -B "$scratch/shared" -DORVEX_TOOLS=OFF -DORVEX_BUILD="$identity"
quietly cmake --build "$scratch/shared"
same "$build/lib/liborvex-parse.so" "$scratch/shared/lib/liborvex-parse.so"
same "$build/lib/liborvex-platform.so" "$scratch/shared/lib/liborvex-platform.so"
if grep -F "$PWD" "$build/bin/orvex-parse"; then echo 'FAILED: the program holds a folder' && exit 1; fi

step 'an installed tree that was moved: program, pkg-config, find_package, dlopen, ctypes'
quietly cmake --install "$build" --prefix "$scratch/installed"
mv "$scratch/installed" "$scratch/moved"
[[ $("$scratch/moved/bin/orvex-parse" integer 0x1f) == 31 ]]
libdir=$(dirname "$(find "$scratch/moved" -name liborvex-parse.so)")
export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags < <(pkg-config --cflags --libs orvex-parse)
compile shared "${flags[@]}" -Wl,-rpath,"$libdir"
readelf -d "$scratch/shared-c" | grep -q 'NEEDED.*liborvex-parse\.so\.1\]'
quietly cmake -S tests/consumers -B "$scratch/found" -DPROGRAM="$scratch/program" \
  -DCMAKE_PREFIX_PATH="$scratch/moved"
quietly cmake --build "$scratch/found"
prints_it "$scratch/found/program_c"
prints_it "$scratch/found/program_cpp"
quietly cc -std=gnu99 -o "$scratch/load" tests/consumers/load.c -I"$scratch/moved/include"
"$scratch/load" "$libdir/liborvex-parse.so.1"
python3 tests/consumers/load.py "$libdir/liborvex-parse.so.1"

step 'the archive, with DESTDIR and an absolute folder: -static'
quietly cmake -S . -B "$scratch/static" -DBUILD_SHARED_LIBS=OFF -DORVEX_TOOLS=OFF -DORVEX_BUILD="$identity" \
  -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_LIBDIR=/usr/lib/any
quietly cmake --build "$scratch/static"
DESTDIR=$scratch/stage quietly cmake --install "$scratch/static" --component development
export PKG_CONFIG_PATH=$scratch/stage/usr/lib/any/pkgconfig
read -ra flags < <(pkg-config --static --cflags --libs orvex-parse)
compile static -static "${flags[@]}"

step 'as a part of another project, whose archives are equal'
quietly cmake -S tests/consumers -B "$scratch/part" -DORVEX_TREE="$tree" -DPROGRAM="$scratch/program" \
  -DCMAKE_BUILD_TYPE=Release -DORVEX_BUILD="$identity"
quietly cmake --build "$scratch/part"
prints_it "$scratch/part/program_c"
prints_it "$scratch/part/program_cpp"
part=$scratch/part/_deps/orvex-parse-build/lib
same "$scratch/static/lib/liborvex-parse.a" "$part/liborvex-parse.a"
same "$scratch/static/lib/liborvex-platform.a" "$part/liborvex-platform.a"
quietly cmake --install "$scratch/part" --prefix "$scratch/whole"
[[ $(cd "$scratch/whole" && find . -type f | sort) == $'./bin/program_c\n./bin/program_cpp' ]]
