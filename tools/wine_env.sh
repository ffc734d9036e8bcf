# Source this file (bash) to run Windows programs in the rest of the calling script.
#
#   wine_env_start tests     the tests' Wine, on a virtual display
#   wine_env_start tour      the tour's Wine, on a virtual display
#   wine_env_start desktop   the sample host's Wine on the user's display
#
# After this call, `wine PROGRAM ARGS` runs a Windows program there.
#
# Each name has its own Wine prefix in this checkout, build/wine/NAME, so that files which tests leave
# in the library's data folder do not affect the demo, and the other way round. Several shells may use
# a prefix at once: the first one starts the X server and the Wine server, the last one ends them.
# HORIVO_WINE_ENV in the environment means that a parent process has set everything up;
# wine_env_start then does nothing.

horivo_wine_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/wine"
export WINEDEBUG="${WINEDEBUG:--all}"
# Stops Wine from offering downloads of Mono and Gecko and from adding menu entries to the user's
# desktop.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe=d}"

wine_env_start() {
    if [ -n "${HORIVO_WINE_ENV:-}" ]; then return 0; fi
    local name=$1
    horivo_wine_home="$horivo_wine_root/$name"
    mkdir -p "$horivo_wine_home/users"
    export WINEPREFIX="$horivo_wine_home/prefix"
    # This shell is registered under the lock, so that another shell that leaves does not end the
    # servers.
    {
        flock 9
        wine_env_forget_dead_users
        if [ -z "$(ls "$horivo_wine_home/users")" ]; then
            wine_env_end_servers
            wine_env_begin_servers "$name" || return 1
        fi
        touch "$horivo_wine_home/users/$BASHPID"
    } 9>"$horivo_wine_home/lock"
    if [ "$name" != desktop ]; then DISPLAY=":$(cat "$horivo_wine_home/display")"; fi
    export DISPLAY
    export HORIVO_WINE_ENV="$name"
    horivo_wine_user=$BASHPID
    trap wine_env_end EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

# The functions below are called by the function above. Descriptor 9 holds the lock; every program
# is started without it (9>&-), because a server would otherwise keep the lock as long as it runs.

wine_env_end() {
    # A subshell inherits the trap, but only the shell that was registered may end its use.
    if [ "${horivo_wine_user:-}" != "$BASHPID" ]; then return 0; fi
    {
        flock 9
        rm -f "$horivo_wine_home/users/$BASHPID"
        wine_env_forget_dead_users
        if [ -z "$(ls "$horivo_wine_home/users")" ]; then wine_env_end_servers; fi
    } 9>"$horivo_wine_home/lock"
}

wine_env_forget_dead_users() {
    local user
    for user in $(ls "$horivo_wine_home/users"); do
        # readlink also fails for a zombie, whose process number still exists.
        readlink -q "/proc/$user/exe" >/dev/null || rm -f "$horivo_wine_home/users/$user"
    done
}

# Starts the servers in their own session. Another shell may still need them when the first one ends,
# so Ctrl-C in the first shell must not end them.
wine_env_begin_servers() {
    if [ "$1" != desktop ]; then wine_env_begin_display || return 1; fi
    if [ ! -f "$WINEPREFIX/horivo-ready" ]; then
        echo "Making the Wine prefix $WINEPREFIX" >&2
        rm -rf "$WINEPREFIX"
        # The library needs Windows 10; a new prefix of this Wine reports an older version.
        if ! { wine wineboot -i && wine winecfg -v win10 && wine_env_settle_windows "$1"; } \
            >"$horivo_wine_home/wineboot.log" 2>&1 9>&-; then
            cat "$horivo_wine_home/wineboot.log" >&2
            return 1
        fi
        wineserver -w 9>&-
        touch "$WINEPREFIX/horivo-ready"
    fi
    # One Wine server for all programs; otherwise each program would start and end its own. The
    # wineboot call also starts Wine's services, because they would keep the output pipe of the first
    # program open.
    setsid wineserver -p >/dev/null 2>&1 9>&-
    setsid wine wineboot >/dev/null 2>&1 </dev/null 9>&-
}

# Configures a new Wine prefix.
# Fonts: Debian's Wine does not search its own font folder, so the fonts of windows and their buttons
# are copied. They have no Japanese characters; the registry entry names a font that has them, as on
# Windows.
# Windows: Wine expects a window manager, and the virtual display has none. Without "Managed = N" each
# window that a test closes waits two seconds, and windows in pictures have no title bar.
wine_env_settle_windows() {
    cp /usr/share/wine/fonts/{tahoma,marlett}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    local fonts='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink'
    wine reg add "$fonts" /v Tahoma /t REG_MULTI_SZ /d 'VL-PGothic-Regular.ttf,VL PGothic' /f
    # Input fields ask for these fonts by name.
    for font in 'MS PGothic' SimSun; do
        wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d 'VL PGothic' /f
    done
    if [ "$1" != desktop ]; then
        wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
    fi
}

wine_env_begin_display() {
    local number="$horivo_wine_home/display"
    rm -f "$number"
    mkfifo "$number.pipe"
    # The server chooses a free display number and writes it to the pipe once it is ready.
    setsid Xvfb -displayfd 3 -screen 0 2560x1600x24 +extension GLX -nolisten tcp -noreset \
        3>"$number.pipe" >"$horivo_wine_home/xvfb.log" 2>&1 9>&- &
    echo $! >"$horivo_wine_home/xvfb.pid"
    disown
    read -r -t 60 <"$number.pipe" && echo "$REPLY" >"$number"
    rm -f "$number.pipe"
    if [ ! -s "$number" ]; then
        cat "$horivo_wine_home/xvfb.log" >&2
        return 1
    fi
    DISPLAY=":$REPLY"
    export DISPLAY
}

wine_env_end_servers() {
    if [ -d "$WINEPREFIX" ]; then wineserver -k >/dev/null 2>&1 9>&- || true; fi
    local pid
    pid=$(cat "$horivo_wine_home/xvfb.pid" 2>/dev/null) || return 0
    # After a restart of the machine, another program may have the process number in this file.
    if [ "$(cat "/proc/$pid/comm" 2>/dev/null)" = Xvfb ]; then kill "$pid" 2>/dev/null || true; fi
    rm -f "$horivo_wine_home/xvfb.pid"
}
