#!/usr/bin/env bash
# package_test.sh BUILD-FOLDER TOOLCHAIN-FILE WINE: packs the build, unpacks the package elsewhere and makes a host with it,
# the README's. The last two are empty where the package is for this machine.
set -euo pipefail
build=$1 toolchain=$2 wine=$3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
sample=$build/pdfs/samples/poster.pdf
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

unpackDeb() {
    dpkg -x "$folder"/zorvan_*.deb "$folder/unpacked"
    dpkg -f "$folder"/zorvan_*.deb Depends | grep -q libjpeg62-turbo
    prefix=$folder/unpacked/usr
    loaded=$prefix/lib/zorvan
}

unpackZip() {
    mkdir "$folder/unpacked"
    (cd "$folder/unpacked" && cmake -E tar xf "$folder"/zorvan-*.zip)
    prefix=$(echo "$folder"/unpacked/zorvan-*)
    loaded=$prefix/bin
}

hasAll() {
    local file
    for file in "$@" "$loaded/Filter.dll" include/zorvan/{zorvan,filter,calling}.h share/man/man1/zorvan.1 share/doc/zorvan/README.md; do
        [ -s "$prefix/${file#"$prefix"/}" ] || { echo "$file is missing" >&2 && exit 1; }
    done
}

# The README's host, by the package's CMake files.
makeHost() {
    mkdir "$folder/host"
    cp "$here/host/CMakeLists.txt" "$folder/host/"
    sed -n '/^```c$/,/^```$/p' "$here/../../README.md" | sed '1d;$d' >"$folder/host/host.c"
    cmake -S "$folder/host" -B "$folder/made" -G Ninja ${toolchain:+--toolchain "$toolchain"} \
        -Dzorvan_DIR="$prefix/lib/cmake/zorvan" >/dev/null
    cmake --build "$folder/made" >/dev/null
    [ "$(cat "$folder/made/filter_folder")" = "$loaded" ]
}

(cd "$build" && cpack -B "$folder" >/dev/null)
if [ -n "$wine" ]; then
    unpackZip
    hasAll bin/ZORVAN.dll bin/zorvan.exe lib/libZORVAN.dll.a share/doc/zorvan/notices/libjpeg-turbo-README.ijg
    makeHost
    cp "$loaded/ZORVAN.dll" "$folder/made/"
    "$wine" "$folder/made/host.exe" "$loaded/" "$sample" "$folder/host.ps"
    "$wine" "$prefix/bin/zorvan.exe" --page-size=none "$sample" "$folder/program.ps"
else
    unpackDeb
    hasAll bin/zorvan lib/libZORVAN.so lib/pkgconfig/zorvan.pc
    makeHost
    "$folder/made/host" "$loaded/" "$sample" "$folder/host.ps"
    "$prefix/bin/zorvan" --page-size=none "$sample" "$folder/program.ps"
    flags=$(PKG_CONFIG_PATH=$prefix/lib/pkgconfig pkg-config --cflags --libs zorvan)
    # Several words:
    # shellcheck disable=SC2086
    cc "$folder/host/host.c" $flags -Wl,-rpath,"$prefix/lib" -o "$folder/by_pkg_config"
    "$folder/by_pkg_config" "$loaded/" "$sample" "$folder/by_pkg_config.ps"
    cmp "$folder/by_pkg_config.ps" "$folder/host.ps"
fi
cmp "$folder/host.ps" "$folder/program.ps"
[ -s "$folder/host.ps" ]
