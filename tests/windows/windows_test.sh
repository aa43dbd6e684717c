#!/usr/bin/env bash
# windows_test.sh TOPIC BUILD-FOLDER LOADER-HOST WINE: one topic of the product on Windows; ends with 1 when it fails.
set -euo pipefail
topic=$1 build=$2 host=$3 wine=$4
tools=$(cd "$(dirname "${BASH_SOURCE[0]}")/../tools" && pwd)
sample=$build/pdfs/samples/poster.pdf
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fail() { echo "$1" >&2 && exit 1; }
# convert PDF PS [FILTER-FOLDER]: by the host that loads the library.
convert() { "$wine" "$host" "$build/ZORVAN.dll" "${3:-$build}/" "$1" "$2"; }
# expectError TEXT COMMAND...: the command fails and says this.
expectError() {
    local text=$1 said
    shift
    ! said=$("$@" 2>&1) || fail "$* succeeds"
    [[ $said == *"$text"* ]] || fail "$* says: $said"
}
expectSameAs() { cmp "$1" "$2" && [ -s "$1" ]; }

samples() {
    local pdf
    for pdf in "$build"/pdfs/samples/*.pdf; do
        convert "$pdf" "$folder/host.ps"
        "$build/zorvan" --quiet --page-size=none "$pdf" "$folder/program.ps"
        expectSameAs "$folder/host.ps" "$folder/program.ps"
    done
}

# Nothing of the compiler's, and no library but the system's.
imports() {
    local file unknown
    for file in ZORVAN.dll Filter.dll zorvan.exe; do
        unknown=$(i686-w64-mingw32-objdump -p "$build/$file" | sed -n 's/^.*DLL Name: //p' |
            grep -vixE 'kernel32.dll|user32.dll|msvcrt.dll' || true)
        [ "$file" != zorvan.exe ] || unknown=${unknown/ZORVAN.dll/}
        [ -z "$unknown" ] || fail "$file imports $unknown"
    done
}

addresses() {
    i686-w64-mingw32-objdump -p "$build/zorvan.exe" | grep 'large address aware' >/dev/null || fail "half the addresses"
}

languages() {
    echo "no PDF" >"$folder/plain.pdf"
    ZORVAN_WINE_LOCALE=C.UTF-8 expectError "-4069: Illegal PDF file." convert "$folder/plain.pdf" "$folder/a.ps"
    ZORVAN_WINE_LOCALE=zh_CN.UTF-8 expectError "-4069: 非法的 PDF 文件。" convert "$folder/plain.pdf" "$folder/a.ps"
    ZORVAN_WINE_LOCALE=de_DE.UTF-8 expectError "-4069: Illegal PDF file." convert "$folder/plain.pdf" "$folder/a.ps"
    # What the program says beside paths is in their code page, what is data is not.
    local said
    said=$(iconv -t GB18030 <<<"error -4069: 非法的 PDF 文件。")
    ZORVAN_WINE_LOCALE=zh_CN.UTF-8 expectError "$said" "$build/zorvan" "$folder/plain.pdf"
    cp "$sample" "$folder/文件.pdf"
    ZORVAN_WINE_LOCALE=zh_CN.UTF-8 "$build/zorvan" --info --json "$folder/文件.pdf" | grep -q '文件\.pdf"'
}

filter_missing() { expectError "-4089: Fail load DLL." convert "$sample" "$folder/a.ps" "$folder"; }

filter_incomplete() {
    expectError "-4078: Illegal Function." convert "$sample" "$folder/a.ps" "$build/tests/api/incomplete/Flush"
}

filter_damaged() {
    head -c 5000 "$build/Filter.dll" >"$folder/Filter.dll"
    expectError "-4089: Fail load DLL." convert "$sample" "$folder/a.ps" "$folder"
}

# convertsIn FOLDER NAME: with the codec library, the input and the output in a folder of this name.
convertsIn() {
    local place=$folder/$1
    mkdir "$place"
    cp "$build/Filter.dll" "$place/"
    cp "$sample" "$place/$2.pdf"
    convert "$sample" "$folder/plain.ps"
    convert "$place/$2.pdf" "$place/host.ps" "$place"
    expectSameAs "$folder/plain.ps" "$place/host.ps"
    "$build/zorvan" --quiet --page-size=none --filter-dir "$place" "$place/$2.pdf"
    expectSameAs "$folder/plain.ps" "$place/$2.ps"
}

blanks() { convertsIn "a folder with blanks" "a file with blanks"; }

# The last letter's second byte is that of a backslash in the ANSI code page.
chinese() {
    export ZORVAN_WINE_LOCALE=zh_CN.UTF-8
    convertsIn "路径 誠" "文件 誠"
}

# The file is mapped whole, between everything else that a process of 4 GiB holds.
large() {
    "$tools/enlarge_pdf.py" "$sample" "$folder/large.pdf" 1300
    convert "$sample" "$folder/plain.ps"
    "$build/zorvan" --quiet --page-size=none "$folder/large.pdf" "$folder/large.ps"
    expectSameAs "$folder/plain.ps" "$folder/large.ps"
}

too_large() {
    "$tools/enlarge_pdf.py" "$sample" "$folder/large.pdf" 4000
    expectError "-4086: Open file error." convert "$folder/large.pdf" "$folder/a.ps"
    expectError "too large to be mapped whole" "$build/zorvan" "$folder/large.pdf"
}

"$topic"
