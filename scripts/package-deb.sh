#!/bin/bash
# Builds the Debian packages, source and binary, of the tree as it stands, and lets lintian look at them. The results are
# in build/package; the last line names the one to install.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/clean-environment.sh

build_depends=$(sed -n '/^Build-Depends:/,/^$/s/^ \([a-z0-9.+-]*\).*/\1/p' debian/control)
# shellcheck disable=SC2086
scripts/install-deps.sh git build-essential ${build_depends/debhelper-compat/debhelper} lintian

place=$PWD/build/package
version=$(dpkg-parsechangelog -S Version)
architecture=$(dpkg --print-architecture)
rm -rf "$place"
mkdir -p "$place/velda-$version"

# What a checkout has, without what other builds have left in it.
sources()
{
    if [ -e .git ]; then
        git ls-files -z --cached --others --exclude-standard
    else
        find . -path ./build -prune -o -type f -print0
    fi
}
sources | tar -c --null --files-from=- --ignore-failed-read | tar -x -C "$place/velda-$version"

# The build has a home directory of its own, which the cache of the compiler outlives.
if command -v ccache > /dev/null; then
    CCACHE_DIR=${CCACHE_DIR:-$(ccache --get-config cache_dir)}
    export CCACHE_DIR CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    PATH=/usr/lib/ccache:$PATH
fi

echo "package: building"
if ! (cd "$place/velda-$version" && dpkg-buildpackage --no-sign) > "$place/build.log" 2>&1; then
    tail -n 50 "$place/build.log" | cut -c 1-500
    exit 1
fi
if grep -n 'warning:' "$place/build.log"; then
    echo "package: $place/build.log has warnings" >&2
    exit 1
fi
rm -r "${place:?}/velda-$version"

echo "package: lintian"
as_anybody=()
[ "$(id -u)" != 0 ] || as_anybody=(--allow-root)
lintian "${as_anybody[@]}" --display-info --fail-on error,warning,info \
    "$place/velda_${version}_$architecture.changes"
echo "$place/velda_${version}_$architecture.deb"
