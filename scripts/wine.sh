# wine.sh: a 32-bit Wine in a folder of its own, build/wine-chroot, without a second architecture on this machine.
# What is to run there is copied to the path that it has here, so that paths mean the same on both sides.
chroot=$root/build/wine-chroot
# The user's regional settings come from the environment, as far as the locale has been generated.
wine_locales=(en_US de_DE fr_FR en_IN ja_JP ar_EG th_TH)

# wine_from LOCALE FOLDER PROGRAM ARGUMENT...: runs a Windows program in FOLDER of the chroot with the user's settings.
# Everything that Wine would look for under /proc is named, so that none has to be mounted.
wine_from() {
    local locale=$1 folder=$2
    shift 2
    timeout "$wine_seconds" chroot "$chroot" env -i -C "$folder" PATH=/usr/bin:/bin HOME=/root TZ=UTC0 \
        LC_ALL="$locale.UTF-8" WINEPREFIX=/root/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= \
        WINEDLLPATH=/usr/lib/i386-linux-gnu/wine WINELOADER=/usr/lib/wine/wine \
        WINESERVER=/usr/lib/wine/wineserver32 ${wine_environment[@]+"${wine_environment[@]}"} \
        /usr/lib/wine/wine "$@"
}
wine_environment=() # further variables of the program
wine_seconds=900    # after which it is ended

# Ends the server that Wine keeps for the next program.
end_wine() {
    chroot "$chroot" env -i WINEPREFIX=/root/wine /usr/lib/wine/wineserver32 -k 2>/dev/null || true
}

# The place from which this machine takes the packages of its own release.
debian_mirror() {
    apt-get indextargets --format '$(CODENAME) $(REPO_URI)' 'Created-By: Packages' 'Origin: Debian' |
        sed -n "s/^$1 //p" | head -n 1
}

fill_chroot() {
    local release mirror
    release=$(. /etc/os-release && echo "$VERSION_CODENAME") || return
    rm -rf --one-file-system "$chroot" "$chroot.part" || return
    mirror=$(debian_mirror "$release")
    if [ -z "$mirror" ]; then # a machine whose lists were never read, or cleared
        apt-get -o Acquire::Retries=3 update || return
        mirror=$(debian_mirror "$release")
    fi
    [ -n "$mirror" ] || { echo "apt names no place for packages of $release"; return 1; }
    debootstrap --arch=i386 --variant=minbase "$release" "$chroot.part" "$mirror" || return
    printf '%s.UTF-8 UTF-8\n' "${wine_locales[@]}" >"$chroot.part/etc/locale.gen"
    DEBIAN_FRONTEND=noninteractive chroot "$chroot.part" \
        apt-get -o Acquire::Retries=3 install -y --no-install-recommends wine32 locales &&
        chroot "$chroot.part" locale-gen && chroot "$chroot.part" apt-get clean && mv "$chroot.part" "$chroot"
}

# The registry and folders of a Windows user, made once.
fill_prefix() {
    wine_from en_US / wineboot --init && end_wine && [ -d "$chroot/root/wine/drive_c/windows" ]
}

# have_chroot: makes what is missing; on failure the answer is false and `no_chroot` says why in one line.
have_chroot() {
    local made="${wine_locales[*]}" began=$SECONDS
    [ "$(cat "$chroot/made" 2>/dev/null)" != "$made" ] || return 0
    if [ "$(id -u)" != 0 ]; then
        no_chroot="only root can make the chroot that Wine runs in"
        return 1
    fi
    printf 'Making an i386 chroot with Wine ... '
    if ! fill_chroot >>"$log" 2>&1 || ! fill_prefix >>"$log" 2>&1; then
        printf 'failed\n'
        no_chroot="the chroot that Wine runs in could not be made, see $log"
        return 1
    fi
    printf '%s\n' "$made" >"$chroot/made"
    duration $((SECONDS - began))
    printf '\n'
}

# put_in PATH...: copies files and folders of the tree to the same path in the chroot; what was there before goes.
put_in() {
    local path
    for path in "$@"; do
        rm -rf "$chroot$path" && mkdir -p "$chroot$(dirname "$path")" && cp -RL "$path" "$chroot$path" || return
    done
}
