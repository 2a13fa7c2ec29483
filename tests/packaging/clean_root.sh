#!/bin/bash
# clean_root.sh DEB: installs the package in a Debian root that has nothing but what it depends on, starts the installed
# program there as an operator does, exchanges a telegram each way with the installed linesim, removes the package and
# looks for what is left. The root without the package is kept in build/package-root for the next time.
set -euo pipefail
if [ "$(id -u)" != 0 ]; then
    exec sudo "$0" "$@"
fi
deb=$(readlink -f "$1")
cd "$(dirname "$(readlink -f "$0")")/../.."

suite=bookworm
kept=$PWD/build/package-root
root=$kept/run
depends=$(dpkg-deb --field "$deb" Depends)
tools="xvfb, xdotool"
base=$kept/$(echo "$suite $depends $tools" | sha256sum | cut -c 1-16)

fail()
{
    echo "package: $1" >&2
    [ ! -s "$root/tmp/log" ] || tail -n 30 "$root/tmp/log" >&2
    exit 1
}

# until_true SECONDS COMMAND...: repeats the command until it succeeds; fails when the time is over.
until_true()
{
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.3
    done
}

# A root with what the package depends on, without the package. It gets its name when it is whole.
make_base()
{
    rm -rf "$kept"
    mkdir -p "$kept"
    echo "package: making a clean root"
    {
        debootstrap --variant=minbase "$suite" "$kept/new" &&
            chroot "$kept/new" apt-get satisfy -y --no-install-recommends "$depends, $tools" &&
            chroot "$kept/new" useradd --create-home --groups dialout clerk &&
            chroot "$kept/new" apt-get clean
    } > "$kept/log" 2>&1 || { tail -n 30 "$kept/log" >&2; fail "no clean root"; }
    mv "$kept/new" "$base"
}

# The rest runs with processes, mounts and a network of its own: nothing of it outlives the test, and nothing outside is
# on its line.
if [ "${2:-}" != alone ]; then
    scripts/install-deps.sh debootstrap iproute2
    [ -d "$base" ] || make_base
    exec unshare --mount --pid --net --fork --kill-child "$0" "$deb" alone
fi

ip link set lo up
rm -rf "$root"
cp -a --reflink=auto "$base" "$root"
trap 'umount --lazy "$root/proc"; rm -rf --one-file-system "$root"' EXIT
mount -t proc proc "$root/proc"
cp "$deb" "$root/tmp/velda.deb"
mkdir -m 1777 "$root/tmp/.X11-unix"
mkdir -m 700 "$root/tmp/runtime"
chroot "$root" chown clerk: /tmp/runtime
home=$root/home/clerk
data=$home/.local/share/velda
manual="Velda. Руководство пользователя.pdf"

# Every file and folder of the root, but for what the package manager keeps, the clerk's caches and passing things.
listing()
{
    (cd "$root" && find . \( -path ./proc -o -path ./sys -o -path ./dev -o -path ./tmp -o -path ./run \
        -o -path ./var/lib/dpkg -o -path ./var/log -o -path ./var/cache -o -path ./home/clerk/.cache \) -prune \
        -o -printf '%y %p\n' | sort)
}

# as_clerk COMMAND...: in the root, with the surroundings of a user who has logged in.
as_clerk()
{
    exec chroot --userspec=clerk:clerk --groups=clerk,dialout "$root" env -i \
        HOME=/home/clerk USER=clerk PATH=/tmp/bin:/usr/bin:/bin LANG=C.UTF-8 TZ=UTC XDG_RUNTIME_DIR=/tmp/runtime \
        DISPLAY=":${display:-}" sh -c 'cd && exec "$@"' - "$@"
}

xdotool_there()
{
    chroot "$root" env DISPLAY=":$display" xdotool "$@" 2> /dev/null
}

window_is_there()
{
    xdotool_there search --onlyvisible --name ' / V:' > /dev/null
}

# What a desktop does with the menu entry.
start_from_menu()
{
    local command
    command=$(sed -n 's/^Exec=//p' "$root/usr/share/applications/velda.desktop")
    # shellcheck disable=SC2086
    (as_clerk $command) >> "$root/tmp/log" 2>&1 &
    workstation=$!
    until_true 60 window_is_there || fail "no window"
}

end_workstation()
{
    kill "$workstation"
    wait "$workstation" || fail "the workstation ends with status $?"
}

# A desktop's way to open a file, which notes what it is asked for.
make_opener()
{
    mkdir "$root/tmp/bin"
    cat > "$root/tmp/bin/xdg-open" <<'OPENER'
#!/bin/sh
echo "$1" > /tmp/opened
OPENER
    chmod +x "$root/tmp/bin/xdg-open"
}

# "?" is the last of the menus, the manual its first entry. Keys that came too early are taken back before the next try.
manual_is_opened()
{
    xdotool_there search --onlyvisible --name ' / V:' windowfocus key --delay 300 Escape Escape alt Left Down Return
    until_true 3 test -s "$root/tmp/opened"
}

# What "?" hands over is the data directory's link to the manual of the package.
open_manual()
{
    local opened
    until_true 60 manual_is_opened || fail "\"?\" does not open the manual"
    opened=$(sed 's|^file://||; s|%|\\x|g' "$root/tmp/opened")
    opened=$(printf '%b' "$opened")
    [ "$opened" = "/home/clerk/.local/share/velda/docs/$manual" ] || fail "\"?\" opens $opened"
    [ "$(chroot "$root" head -c 4 "$opened")" = %PDF ] || fail "the manual is no PDF"
    cmp "$root/usr/share/velda/docs/$manual" "$root/usr/share/doc/velda/manual.pdf" ||
        fail "another manual among the documents"
    echo "package: \"?\" opens the manual"
}

# The first start makes the data directory and fills it; nothing else of the system changes.
first_start()
{
    listing > "$root/tmp/installed"
    touch "$root/tmp/stamp"
    start_from_menu
    until_true 30 test -s "$data/sound/input.wav" || fail "no sounds in the data directory"
    open_manual
    end_workstation
    diff -r "$root/usr/share/velda/sound" "$data/sound" || fail "other sounds in the data directory"
    grep -q 'Запуск ' "$data"/prt/*.prt || fail "no journal"
    listing | grep -v '^[a-z] \./home/clerk/\.local\(/share\(/velda\(/.*\)\?\)\?\)\?$' |
        diff "$root/tmp/installed" - || fail "the program has written outside its data directory"
    [ -z "$(find "$root/usr" "$root/etc" -newer "$root/tmp/stamp")" ] || fail "the program has changed the system"
    echo "package: the first start has made the data directory"
}

# arrived TELEGRAM FILE...: one of the files is the telegram, byte for byte.
arrived()
{
    local telegram=$1 file
    shift
    for file in "$@"; do
        cmp -s "$telegram" "$file" && return
    done
    return 1
}

both_arrived()
{
    arrived "$root/tmp/outgoing" "$home"/kept/[0-9]*.txt && arrived "$home/incoming/1" "$data"/inp/*/*
}

exchange()
{
    local commands=$root/tmp/commands
    mkdir -p "$home/incoming"
    printf 'ЗЦЗЦ ВХ1\r\nРАБОТАЕТ ЛИ КАНАЛ=\r\nНННН  ' > "$home/incoming/1"
    printf 'ЗЦЗЦ ИСХ1\r\nКАНАЛ РАБОТАЕТ=\r\nНННН  ' > "$root/tmp/outgoing"
    mkfifo "$commands"
    (as_clerk linesim peer --listen 0 --send incoming --store kept) < "$commands" > "$root/tmp/far-end" 2>&1 &
    local far_end=$!
    exec 3> "$commands"
    until_true 20 grep -q '^listening: ' "$root/tmp/far-end" || fail "linesim does not listen"

    cat > "$data/velda.ini" <<SETTINGS
[CONNECT]
processMode=2
TcpMode=true
%U0410%U0434%U0440%U0435%U0441=127.0.0.1
%U041F%U043E%U0440%U0442=$(sed -n 's/^listening: //p' "$root/tmp/far-end")

[PATH]
scanDirsTimeout=2
SETTINGS
    { printf '\r\n'; cat "$root/tmp/outgoing"; printf '\r\n'; } > "$data/out/20260731u001.260731_120000"
    chroot "$root" chown -R clerk: /home/clerk
    start_from_menu
    until_true 120 both_arrived || { cat "$root/tmp/far-end" >&2; fail "the telegrams have not come through"; }
    end_workstation
    echo quit >&3
    wait "$far_end" || fail "linesim ends with status $?"
    echo "package: a telegram has come through each way"
}

listing > "$root/tmp/before"
chroot "$root" dpkg --install /tmp/velda.deb > /dev/null || fail "the package cannot be installed"
mkfifo "$root/tmp/display"
# The server stays as it is when a look at its windows was the only client for a moment.
(as_clerk Xvfb -displayfd 1 -screen 0 1080x780x24 -nolisten tcp -noreset) > "$root/tmp/display" 2>> "$root/tmp/log" &
make_opener
read -r -t 30 display < "$root/tmp/display" || fail "no display"
first_start
exchange

chroot "$root" dpkg --purge velda > /dev/null || fail "the package cannot be removed"
listing | grep -v '^[a-z] \./home/clerk/' | diff <(grep -v '^[a-z] \./home/clerk/' "$root/tmp/before") - ||
    fail "the removed package has left something"
both_arrived || fail "the data are gone"
[ -f "$data/velda.ini" ] || fail "the settings are gone"
echo "package: installed, used, removed; only the data are left"
