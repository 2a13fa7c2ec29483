#!/bin/bash
# What a run of the tests takes of its caller's environment.
#   test_environment.sh TREE
set -euo pipefail
cd "$1"

found=$(env -i "PATH=$PATH" HOME=/home/clerk http_proxy=http://proxy:3128 \
    ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=halt_on_error=0 CXXFLAGS=-O3 LDFLAGS=-s CC=tcc QT_QPA_PLATFORM=xcb \
    QT_SCALE_FACTOR=2 LANG=ru_RU.KOI8-R LC_TIME=C LC_ALL=C TZ=Asia/Tokyo DISPLAY=:0 PULSE_SERVER=tcp:host \
    VELDA_PORTS=10000001=/dev/ttyUSB0 CTEST_PARALLEL_LEVEL=64 LD_PRELOAD= FAKETIME=+1d BASH_ENV= \
    bash -c '. scripts/clean-environment.sh; env' | grep -v '^_=\|^PATH=\|^PWD=\|^SHLVL=' | sort)
expected="HOME=/home/clerk
LC_ALL=C.UTF-8
TZ=UTC
http_proxy=http://proxy:3128"
[ "$found" = "$expected" ] || diff <(echo "$expected") <(echo "$found")
