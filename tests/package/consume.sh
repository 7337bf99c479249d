#!/bin/sh
# consume.sh WAY: uses the library as other projects do. WAY is one of
#   install        installs the built tree, which the next three use, into a folder and moves that
#   headers        compiles every installed header alone
#   find_package   builds and runs a program through the CMake package
#   pkg_config     the same through pkg-config
#   sub_directory  configures the tree as a part of another project and compiles a program against it there
# The environment tells MIRVANE_SOURCES, MIRVANE_BUILD, CXX and the folder to WORK in.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
prefix=$WORK/moved
way=$1
fresh() { rm -rf "${WORK:?}/$1" && mkdir -p "$WORK/$1"; }

case $way in
    install)
        fresh prefix
        rm -rf "$prefix"
        cmake --install "$MIRVANE_BUILD" --prefix "$WORK/prefix" >/dev/null
        mv "$WORK/prefix" "$prefix"
        "$prefix/bin/mirvane-ocsp" --version
        ;;
    headers)
        cd "$prefix/include"
        find mirvane -name '*.h' >"$WORK/headers.txt"
        [ -s "$WORK/headers.txt" ]
        xargs -P 2 -I{} "$CXX" -std=c++20 -Wall -Wextra -Wpedantic -Werror -I. -x c++ -fsyntax-only {} \
            <"$WORK/headers.txt"
        echo "$(wc -l <"$WORK/headers.txt") headers compile alone"
        ;;
    find_package)
        fresh "$way"
        cmake -S "$here/$way" -B "$WORK/$way" -G Ninja -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_PREFIX_PATH="$prefix"
        cmake --build "$WORK/$way"
        "$WORK/$way/consumer"
        ;;
    pkg_config)
        command -v pkg-config >/dev/null || { echo "pkg-config is not installed"; exit 77; }
        fresh "$way"
        PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name mirvane-ocsp.pc)")
        export PKG_CONFIG_PATH
        # shellcheck disable=SC2046  # a list of words is meant
        "$CXX" -std=c++20 -I"$here/program" "$here/program/main.cpp" -o "$WORK/$way/consumer" \
            $(pkg-config --cflags --libs mirvane-ocsp)
        LD_LIBRARY_PATH=$(pkg-config --variable=libdir mirvane-ocsp) "$WORK/$way/consumer"
        ;;
    sub_directory)
        fresh "$way"
        cd "$WORK/$way"
        cmake -S "$here/$way" -B . -G Ninja -DCMAKE_CXX_COMPILER="$CXX" -DMIRVANE_SOURCES="$MIRVANE_SOURCES"
        # To build the library once more would take minutes; its headers and the program's object take seconds.
        ninja mirvane-ocsp-headers mirvane-platform-headers
        object=$(ninja -t targets all | sed -n 's/^\(.*main\.cpp\.o\): .*/\1/p' | grep consumer)
        ninja -t commands "$object" | tail -n 1 >compile.sh
        sh -e compile.sh
        [ -f "$object" ]
        # Nothing of it installs with the project around it; and another platform takes ours' place.
        ! cmake --install . --prefix "$WORK/nothing" | grep -i mirvane
        cmake . -DMIRVANE_PLATFORM=other_platform >/dev/null
        ! ninja -t targets all | grep libmirvane-platform
        ;;
    *) exit 2 ;;
esac
