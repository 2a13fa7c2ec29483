# shellcheck shell=bash
# Read by a script whose outcome must not depend on who calls it: of the caller's environment stays only what finds
# programs, places and the network. Compilers, their flags, sanitizers, Qt, the locale, the clock and the display are
# those of the tree.

for name in $(compgen -e); do
    case $name in
        PATH | HOME | USER | LOGNAME | SHELL | TERM | PWD | TMPDIR | CI) ;;
        CCACHE_* | SUDO_* | *_proxy | *_PROXY) ;;
        VELDA_SEED | VELDA_DISK_POINTS | VELDA_DISK_JOBS) ;;
        CMAKE_BUILD_PARALLEL_LEVEL | VELDA_QT*_SOURCE | VELDA_WINDOWS_CACHE) ;;
        *) unset "$name" ;;
    esac
done
unset name
export LC_ALL=C.UTF-8 TZ=UTC
