#!/bin/bash
# Holds the sources to .clang-format, all of them, and to .clang-tidy, those of the program and of linesim that have
# changed: since the newest commit that is older than six hours before the last one, or since the branch left
# origin/main if that was earlier.
#   scripts/check-style.sh          what has changed
#   scripts/check-style.sh FILE...  these sources
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/clean-environment.sh
scripts/install-deps.sh

# The commit behind which everything is looked at. The whole tree takes as long as its tests, so that a history of
# less than six hours is looked at from its first commit on.
since()
{
    local before main
    before=$(git rev-list -1 --before="$(($(git log -1 --format=%ct) - 6 * 3600))" HEAD)
    [ -n "$before" ] || before=$(git rev-list --max-parents=0 HEAD | tail -n 1)
    main=$(git merge-base HEAD origin/main 2>/dev/null || true)
    if [ -n "$main" ] && git merge-base --is-ancestor "$main" "$before"; then
        echo "$main"
    else
        echo "$before"
    fi
}

# The sources that have changed, committed or not.
changed()
{
    local sources=('app/*.cpp' 'text/*.cpp' 'link/*.cpp' 'procedures/*.cpp' 'records/*.cpp' 'ui/*.cpp' 'tools/*.cpp')
    git diff --name-only --diff-filter=d "$(since)" -- "${sources[@]}"
}

# Of the names on standard input those that are built here: not what belongs to another system.
built()
{
    while read -r file; do
        ! grep -qF "\"file\": \"$PWD/$file\"" build/tidy/compile_commands.json || echo "$file"
    done
}

echo "style: format"
git ls-files -z '*.cpp' '*.h' | xargs -0 -n 50 -P "$(nproc)" clang-format --dry-run -Werror

# Without the compiler's precompiled header, which clang cannot read, and without the tests.
. scripts/build-environment.sh
cmake --preset debug -B build/tidy -DVELDA_BUILD_TESTS=OFF -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON > /dev/null
if [ $# = 0 ]; then
    mapfile -t files < <(changed | built)
else
    files=("$@")
fi
echo "style: checks of ${#files[@]} sources"
[ "${#files[@]}" -gt 0 ] || exit 0
printf '%s\0' "${files[@]}" |
    xargs -0 -n 4 -P "$(nproc)" scripts/tidy.py 2>&1 |
    sed '/ warnings\? generated\.$/d'
