# shellcheck shell=bash
# Read by the scripts of the tree, from its root: a UTF-8 locale and the function that builds.

case "${LC_ALL:-${LC_CTYPE:-${LANG:-}}}" in
    *UTF-8 | *utf8 | *utf-8) ;;
    *) export LC_ALL=C.UTF-8 ;;
esac

# build PRESET [TARGET...]: configures and builds; a line on the terminal only for what goes wrong.
build()
{
    local preset=$1 launcher=() targets=()
    shift
    [ $# = 0 ] || targets=(--target "$@")
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        # An object that another clone has compiled serves as well; a debugger is to be started where the sources lie.
        export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
        export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    fi
    echo "building (${preset})"
    cmake --preset "$preset" "${launcher[@]}" > /dev/null
    cmake --build --preset "$preset" "${targets[@]}"
}
