#!/bin/bash
# Shows the workstation at work: a simulated far end on loopback, the workstation on a fresh data directory,
# telegrams in both directions.
#   ./run.sh                     with a message switching centre
#   ./run.sh NAME                another demonstration of scripts/demonstration: cks, direct, skk, nerva
#   ./run.sh NAME --adapter      the same through a simulated line adapter at 200 baud
#   ./run.sh NAME --adapter old  the same with an adapter of the older generation, which gives no echo
# With a display the operator's window stays open until it is closed. Without one it runs under a virtual
# display, ends by itself, leaves a screenshot, and the exit status is 0 only if every telegram has come through
# whole.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"

name=cks
case "${1:---}" in
    --*) ;;
    *) name=$1; shift ;;
esac
steps=scripts/demonstration
if [ "$name" = common ] || [ ! -f "$steps/$name.sh" ]; then
    echo "run.sh: no demonstration $steps/$name.sh" >&2
    exit 2
fi
case "$*" in
    "") firmware='' patience=90 ;;
    --adapter | "--adapter new") firmware=new patience=420 ;; # the pace of the line
    "--adapter old") firmware=old patience=420 ;;
    *)
        echo "run.sh: not understood: $*" >&2
        exit 2
        ;;
esac

scripts/install-deps.sh
. scripts/build-environment.sh
build release velda linesim

bin=$PWD/build/release/bin
result=$PWD/build/demo
rm -rf "$result"
mkdir -p "$result"
demo=$(mktemp -d)
. scripts/carrier.sh
. "$steps/common.sh"
. "$steps/$name.sh"
trap finish EXIT

prepare_data
start_far_end
if has_display; then
    echo "The window is open: close it with Alt+X."
    start_workstation
    wait "$workstation" || true
    show_result
    exit 0
fi

start_virtual_display
start_workstation
status=0
wait_for_telegrams || status=1
operator_sends || status=1
operator_types || status=1
operator_reads || status=1
until_true 10 take_screenshot || status=1
end_workstation || status=1
end_far_end || status=1
show_result
check_end || status=1
echo "screenshot: $result/screenshot.png"
[ "$status" = 0 ] && echo "All telegrams came through." || echo "The demonstration FAILED."
exit "$status"
