#!/bin/bash
# Installs what is missing, builds, and runs the tests; ./test.sh --help tells which.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
. scripts/clean-environment.sh

help()
{
    cat <<'END'
usage: ./test.sh [OPTION] [ARGUMENT of ctest...]

Installs what is missing, builds, and runs the tests; without an option each test, in the debug build.

  --asan     each under AddressSanitizer and UBSan
  --tsan     those of the parts under ThreadSanitizer
  --day      a day with a centre, hours with faults, thirty days of each procedure in one life, passed at speed
  --kill     short days of each procedure, the workstation dying, its disk failing or the power going at each call in turn
  --cuts     days of each procedure, the line cut at a thousand random bytes (or VELDA_LINE_CUTS, by VELDA_SEED)
  --fuzz     a million random sessions beside each naive reader, ten million inputs (or VELDA_FUZZ_RUNS) for each fuzz
             target, in the release build
  --bench    the benchmarks, in the release build, with their table
  --package  the Debian package: built, put into a clean root, used there, removed
  --windows  those that Windows can have, cross-built, under Wine
  --help     this text

What stands behind the option goes to ctest: ./test.sh --asan -R journal
END
}

preset=debug
case "${1:-}" in
    --asan) preset=asan; shift ;;
    --tsan) preset=tsan; shift ;;
    --day) shift; day=yes ;;
    --kill) shift; kill=yes ;;
    --cuts) shift; cuts=yes ;;
    --fuzz) preset=release; shift; fuzz=yes ;;
    --bench) preset=release; shift; bench=yes ;;
    --package) shift; package=yes ;;
    --windows) shift; scripts/windows/build.sh --tests; exec scripts/windows/run-tests.sh "$@" ;;
    --help | -h) help; exit ;;
    --*) echo "test.sh: unknown option $1" >&2; help >&2; exit 2 ;;
esac

if [ -n "${package:-}" ]; then
    scripts/package-deb.sh
    exec tests/packaging/clean_root.sh build/package/velda_*.deb
fi

scripts/install-deps.sh
. scripts/build-environment.sh
build "$preset"

export ASAN_OPTIONS="detect_leaks=1:detect_stack_use_after_return=1:abort_on_error=0"
export LSAN_OPTIONS="suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export TSAN_OPTIONS="suppressions=$PWD/tests/tsan.supp:second_deadlock_stack=1"

if [ -n "${day:-}" ]; then
    exec ctest --test-dir "build/$preset" --output-on-failure -L day "$@"
fi
if [ -n "${kill:-}" ]; then
    exec ctest --test-dir "build/$preset" --verbose -L kill "$@"
fi
if [ -n "${cuts:-}" ]; then
    exec ctest --test-dir "build/$preset" --verbose -L cuts "$@"
fi
if [ -n "${fuzz:-}" ]; then
    exec ctest --test-dir "build/$preset" --verbose -j"$(nproc)" -L long "$@"
fi
if [ -z "${bench:-}" ]; then
    # Most tests wait rather than compute, see velda_pace() in tests/CMakeLists.txt; a sanitizer computes more.
    share=6
    [ "$preset" = debug ] || share=4
    left_out="bench|cuts|day|kill|long"
    # Threads meet in the tests of the parts. In whole programs the toolkit, which is not instrumented, passes so much
    # between them that its own orderly ways are told as races.
    [ "$preset" != tsan ] || left_out+="|e2e"
    exec ctest --test-dir "build/$preset" --output-on-failure -j$((share * $(nproc))) -LE "$left_out" "$@"
fi

log=build/bench.log
status=0
ctest --test-dir "build/$preset" -L bench --verbose "$@" > "$log" || status=$?
printf '\n| what | ratio | bar | result |\n|---|---|---|---|\n'
sed -n 's/^[0-9]*: bench: \(.*\)$/| \1 |/p' "$log"
[ "$status" = 0 ] || { cat "$log"; exit "$status"; }
