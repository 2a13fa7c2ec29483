#!/bin/bash
# Builds the Qt that the workstation for Windows, 32 bit, is built with, and prints its folder on the last line.
# That takes half an hour, once: the folder stands in the cache under Qt's version and the sum of this script.
# Each module's source is Debian's own package or, where that is not to be had, the folder that one of these names:
#   VELDA_QTBASE_SOURCE, VELDA_QTSERIALPORT_SOURCE, VELDA_QTMULTIMEDIA_SOURCE
# VELDA_WINDOWS_CACHE is the cache instead of ~/.cache/velda-windows.
set -euo pipefail

version=5.15.8
modules="qtbase qtserialport qtmultimedia"
cross=i686-w64-mingw32-
# Parts by others of what belongs to other systems or is left out here.
not_contained='/(android|angle|cocoa|forkfd|gradle|harfbuzz|kernel|opengl|vulkan|VulkanMemoryAllocator|wasm|xcb)/'
not_contained+='|^(dbus|testlib)/'

script=$(readlink -f "$0")
cache=${VELDA_WINDOWS_CACHE:-$HOME/.cache/velda-windows}
qt=$cache/qt-$version-$(sha256sum "$script" | cut -c1-12)
work=$qt.work

check_compiler()
{
    local compiler
    for compiler in gcc g++; do
        "$cross$compiler" --version | head -n 1 | grep -q posix && continue
        echo "build-qt: $cross$compiler has not the posix threads; update-alternatives --set $cross$compiler" \
            "/usr/bin/$cross$compiler-posix makes it so" >&2
        exit 1
    done
}

# The sources of the machine's package lists, in lists of our own: the machine's stay as they are.
prepare_lists()
{
    local etc=$work/apt from
    [ ! -e "$etc/ready" ] || return 0
    rm -rf "$etc"
    mkdir -p "$etc/parts" "$etc/lists/partial"
    for from in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ ! -f "$from" ] || sed -n 's/^deb\(-src\)\? /deb-src /p' "$from" | sort -u > "$etc/parts/$(basename "$from" .list).list"
    done
    for from in /etc/apt/sources.list.d/*.sources; do
        [ ! -f "$from" ] || sed 's/^Types:.*/Types: deb-src/' "$from" > "$etc/parts/$(basename "$from")"
    done
    apt_get update -qq
    touch "$etc/ready"
}

apt_get()
{
    apt-get -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$work/apt/parts" \
        -o Dir::State::Lists="$work/apt/lists" -o APT::Sandbox::User= "$@"
}

# fetch_source MODULE: makes the folder MODULE, from the folder that is named for it or from Debian's package.
fetch_source()
{
    local module=$1 named="VELDA_${1^^}_SOURCE"
    rm -rf "$module" "package-$module"
    if [ -n "${!named:-}" ]; then
        cp -a "${!named}" "$module"
        echo "$module $(version_of "$module")" > "source-$module"
        # A checkout has no headers to include; they are made where this folder says that it is one.
        [ -d "$module/include" ] || mkdir -p "$module/.git"
        return
    fi
    prepare_lists
    mkdir "package-$module"
    if ! (cd "package-$module" && apt_get source -qq "$module-opensource-src"); then
        echo "build-qt: Debian's source of $module is not to be had; $named=FOLDER names another" >&2
        exit 1
    fi
    mv "package-$module/$module-opensource-src-"*/ "$module"
    sed -n 's/^\(Source\|Version\): //p' "package-$module/"*.dsc | paste -s -d ' ' > "source-$module"
    rm -rf "package-$module"
}

version_of()
{
    sed -n 's/^MODULE_VERSION *= *//p' "$1/.qmake.conf"
}

# The folder is named by the version of qtbase; the other modules need only be made for it.
check_version()
{
    local module=$1 found
    found=$(version_of "$module")
    case "$module $found" in
        "qtbase $version") return ;;
        qtbase*) ;;
        *" ${version%.*}."*) return ;;
    esac
    echo "build-qt: the source of $module is of Qt $found, not $version" >&2
    exit 1
}

configure_qtbase()
{
    ../../qtbase/configure -prefix "$qt" -opensource -confirm-license -release -shared \
        -xplatform win32-g++ -device-option CROSS_COMPILE=$cross -nomake examples -nomake tests \
        -no-opengl -no-openssl -no-dbus -no-icu -no-feature-sql -no-feature-tabletevent \
        -qt-zlib -qt-pcre -qt-libpng -qt-libjpeg -qt-freetype
}

# keep_licences MODULE: the texts that a copy of these libraries must be accompanied by, and of which sources they are.
keep_licences()
{
    local module=$1 to=$qt/licences/$1 parts part
    rm -rf "$to"
    mkdir -p "$to"
    cp "$module"/LICENSE.{GPL3*,LGPL3} "$to"
    cp "source-$module" "$to/SOURCE.txt"
    [ ! -f "$module/debian/copyright" ] || cp "$module/debian/copyright" "$to"
    # Each part that is by others tells so in its folder.
    parts=$(find "$module/src" -name qt_attribution.json -printf '%P\n' |
        { grep -v -E "$not_contained" || true; })
    for part in $parts; do
        part=${part%/*}
        mkdir -p "$to/$part"
        find "$module/src/$part" -maxdepth 1 \
            \( -iname '*licen[cs]e*' -o -iname 'copying*' -o -iname 'qt_attribution.json' \) \
            -exec cp -t "$to/$part" {} +
    done
}

# make_module MODULE: from its source into the finished folder.
make_module()
{
    local module=$1
    fetch_source "$module"
    check_version "$module"
    rm -rf "build/$module"
    mkdir -p "build/$module"
    pushd "build/$module"
    if [ "$module" = qtbase ]; then
        configure_qtbase
    else
        "$qt/bin/qmake" "../../$module"
    fi
    make -s -j"$(nproc)"
    make -s install
    popd
    keep_licences "$module"
    rm -rf "$module" "build/$module"
}

# What has been built once is not built again.
build_all()
{
    local module
    check_compiler
    mkdir -p "$work"
    cd "$work"
    for module in $modules; do
        [ ! -e "built-$module" ] || continue
        echo "build-qt: $module" >&2
        trap 'tail -n 30 "$module.log" >&2; echo "build-qt: $module failed, see $work/$module.log" >&2' EXIT
        make_module "$module" > "$module.log" 2>&1
        touch "built-$module"
        trap - EXIT
    done
    touch "$qt/complete"
    cd "$cache"
    rm -rf "$work"
}

[ -e "$qt/complete" ] || build_all
echo "$qt"
