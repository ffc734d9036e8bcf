# To be sourced (bash): Windows programs for the rest of the calling script.
#
#   wine_env_start tests     the tests' Wine, on a virtual display
#   wine_env_start tour      the tour's Wine, on a virtual display
#   wine_env_start desktop   the sample host's Wine on the user's display
#
# After it `wine PROGRAM ARGS` runs a Windows program there.
#
# Each has a prefix of its own in this checkout, build/wine/NAME: what tests leave in the library's
# data folder must not show in the demo, nor the other way round. Several shells may use one at
# once: the first to come starts the X server and the Wine server, the last to leave ends them.
# HORIVO_WINE_ENV in the environment tells child processes that all is set up; for them
# wine_env_start does nothing.

horivo_wine_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/wine"
export WINEDEBUG="${WINEDEBUG:--all}"
# No offers to download Mono and Gecko, no menu entries on the user's desktop.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe=d}"

wine_env_start() {
    if [ -n "${HORIVO_WINE_ENV:-}" ]; then return 0; fi
    local name=$1
    horivo_wine_home="$horivo_wine_root/$name"
    mkdir -p "$horivo_wine_home/users"
    export WINEPREFIX="$horivo_wine_home/prefix"
    # Registered under the lock: whoever leaves then sees this shell and ends nothing.
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

# Everything below serves the function above. What is started while descriptor 9 holds the lock is
# started without it (9>&-), else the lock would live as long as the server.

wine_env_end() {
    # A subshell inherits the trap, but only the shell that came in may leave.
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
        # A zombie has no program any more; a number alone would let it count as alive.
        readlink -q "/proc/$user/exe" >/dev/null || rm -f "$horivo_wine_home/users/$user"
    done
}

# The servers outlive the shell that starts them when another still needs them: they get a session
# of their own, so that Ctrl-C in the first shell does not take them from the second.
wine_env_begin_servers() {
    if [ "$1" != desktop ]; then wine_env_begin_display || return 1; fi
    if [ ! -f "$WINEPREFIX/horivo-ready" ]; then
        echo "Making the Wine prefix $WINEPREFIX" >&2
        rm -rf "$WINEPREFIX"
        # The library asks for Windows 10; a new prefix of this Wine poses as something older.
        if ! { wine wineboot -i && wine winecfg -v win10 && wine_env_settle_windows "$1"; } \
            >"$horivo_wine_home/wineboot.log" 2>&1 9>&-; then
            cat "$horivo_wine_home/wineboot.log" >&2
            return 1
        fi
        wineserver -w 9>&-
        touch "$WINEPREFIX/horivo-ready"
    fi
    # One Wine server for all programs to come: without it each would start and end its own. The
    # first program also starts Wine's services, which would keep its output pipe open for good.
    setsid wineserver -p >/dev/null 2>&1 9>&-
    setsid wine wineboot >/dev/null 2>&1 </dev/null 9>&-
}

# Wine leaves windows to a window manager. The virtual display has none: each window that a test
# closes would wait two seconds for its answer, and in pictures a window would have no title bar.
# Debian's Wine does not look into its own folder of fonts: those for windows and their buttons are
# put where it does. They have no Japanese; Windows would look for that in another font.
wine_env_settle_windows() {
    cp /usr/share/wine/fonts/{tahoma,marlett}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    local fonts='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink'
    wine reg add "$fonts" /v Tahoma /t REG_MULTI_SZ /d 'VL-PGothic-Regular.ttf,VL PGothic' /f
    # Input fields ask for these by name.
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
    # The server itself looks for a free display number and says which once it is ready.
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
    # A number left over from before a restart of the machine may be another program's by now.
    if [ "$(cat "/proc/$pid/comm" 2>/dev/null)" = Xvfb ]; then kill "$pid" 2>/dev/null || true; fi
    rm -f "$horivo_wine_home/xvfb.pid"
}
