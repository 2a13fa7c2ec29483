#!/bin/bash
# Builds the workstation for Windows, 32 bit, in build/windows and packs what is installed there into
# build/velda-VERSION-win32.zip: programs, Qt's libraries and plugins, sounds, the manual, licences.
#   scripts/windows/build.sh          programs and zip
#   scripts/windows/build.sh --tests  programs and tests, without a zip
# The first time it builds Qt, see build-qt.sh, which also tells of sources that Debian's packages do not bring.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
. scripts/clean-environment.sh

case "${1:-}" in
    --tests) targets=all tests=ON ;;
    "") targets='velda velda-books linesim' tests=OFF ;;
    *) echo "build.sh: not understood: $*" >&2; exit 2 ;;
esac

cross=i686-w64-mingw32
libraries="Core Gui Widgets Network SerialPort Multimedia PrintSupport"
plugins="platforms/qwindows printsupport/windowsprintersupport audio/qtaudio_windows imageformats/qico"
runtime="libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll"
build=build/windows
manual="docs/Velda. Руководство пользователя.pdf"

scripts/install-deps.sh
scripts/install-deps.sh g++-mingw-w64-i686-posix gcc-mingw-w64-i686-posix dpkg-dev make perl zip
qt=$(scripts/windows/build-qt.sh | tail -n 1)

compile()
{
    local launcher=()
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    ! command -v ccache > /dev/null || launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    echo "building (windows)"
    cmake -G Ninja -S . -B "$build" --toolchain scripts/windows/toolchain.cmake "${launcher[@]}" \
        -DCMAKE_PREFIX_PATH="$qt" -DCMAKE_BUILD_TYPE=Release -DCMAKE_COMPILE_WARNING_AS_ERROR=ON \
        -DVELDA_BUILD_TESTS="$tests" > /dev/null
    # shellcheck disable=SC2086
    cmake --build "$build" --target $targets
}

# copy_plugins TO PLUGIN...
copy_plugins()
{
    local to=$1 plugin
    shift
    for plugin in "$@"; do
        mkdir -p "$to/$(dirname "$plugin")"
        cp "$qt/plugins/$plugin.dll" "$to/$plugin.dll"
    done
}

# Beside the programs stands what they need, so that they run where they are built.
complete_programs()
{
    local name
    for name in $libraries; do
        cp "$qt/bin/Qt5$name.dll" "$build/bin"
    done
    for name in $runtime; do
        cp "$(runtime_file "$name")" "$build/bin"
    done
    # shellcheck disable=SC2086
    copy_plugins "$build/bin" $plugins
    [ "$tests" = OFF ] || cp "$qt/bin/Qt5Test.dll" "$build/bin"
    [ "$tests" = OFF ] || copy_plugins "$build/bin" platforms/qoffscreen
}

runtime_file()
{
    local found
    found=$($cross-g++-posix -print-file-name="$1")
    [ -f "$found" ] || found=/usr/$cross/lib/$1
    echo "$found"
}

# The texts that accompany what is not our own.
copy_licences()
{
    local to=$1
    mkdir -p "$to/compiler"
    cp -r "$qt/licences/." "$to"
    cp /usr/share/doc/gcc-mingw-w64-base/copyright "$to/compiler/gcc.txt"
    cp /usr/share/doc/mingw-w64-common/copyright "$to/compiler/mingw-w64.txt"
    cp /usr/share/common-licenses/GPL-3 "$to/compiler/GPL-3.txt"
    mkdir "$to/programs"
    cp /usr/share/doc/qttranslations5-l10n/copyright "$to/programs/qttranslations.txt"
    cp /usr/share/doc/avr-libc/copyright "$to/programs/avr-libc.txt"
    cp /usr/share/common-licenses/GPL-3 "$to/programs/GPL-3.txt"
    mkdir "$to/manual"
    cp /usr/share/common-licenses/Apache-2.0 "$to/manual/Apache-2.0.txt"
    sed -n '/^Files: docs.manual/,/^$/p; /^License: \(bitstream-vera\|OFL-1.1\)$/,/^$/p' debian/copyright \
        > "$to/manual/fonts.txt"
    for_notepad "$to/READ ME.txt" packaging/windows/licences.txt
}

# for_notepad TO FROM: with the line ends and the mark of UTF-8 that its readers of text know it by.
for_notepad()
{
    { printf '\xef\xbb\xbf'; sed "s/@VERSION@/$version/; s/\$/\r/" "$2"; } > "$1"
}

pack()
{
    local version name folder library
    version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
    name=velda-$version-win32
    folder=$build/package/$name
    rm -rf "$build/package"
    mkdir -p "$folder/docs"
    for library in $libraries; do
        cp "$build/bin/Qt5$library.dll" "$folder"
    done
    for library in $runtime; do
        $cross-strip -o "$folder/$library" "$build/bin/$library"
    done
    # shellcheck disable=SC2086
    copy_plugins "$folder" $plugins
    $cross-strip -o "$folder/velda.exe" "$build/bin/velda.exe"
    $cross-strip -o "$folder/velda-books.exe" "$build/bin/velda-books.exe"
    $cross-strip -o "$folder/linesim.exe" "$build/bin/linesim.exe"
    cp -r sound "$folder"
    cp "$manual" "$folder/docs"
    for_notepad "$folder/READ ME.txt" packaging/windows/read-me.txt
    for_notepad "$folder/CHANGELOG.txt" CHANGELOG.md
    copy_licences "$folder/licences"
    rm -f "build/$name.zip"
    (cd "$build/package" && zip -q -r -X "../../$name.zip" "$name")
    echo "build/$name.zip"
}

# The manual is the same on every system; what it shows runs on this one.
make_manual()
{
    [ -f "$manual" ] || scripts/make-manual.sh
}

compile
complete_programs
[ "$tests" = OFF ] || exit 0
make_manual
pack
