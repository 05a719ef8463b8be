#!/bin/sh
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installs the build into a temporary prefix and runs both installed programs
# from there, then builds the Debian package and checks its files and its
# dependencies with dpkg-deb.
# Usage: install_and_package.sh BUILD_DIR CMAKE CPACK
set -eu
build=$1
cmake=$2
cpack=$3

work=$(mktemp -d)
desktop_pid=
cleanup() {
    if [ -n "$desktop_pid" ]; then kill "$desktop_pid" 2>/dev/null || true; fi
    rm -rf "$work"
}
trap cleanup EXIT

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

# ------------------------------------------------------------------ install
"$cmake" --install "$build" --prefix "$work/prefix" >"$work/install.log" 2>&1 \
    || { cat "$work/install.log" >&2; fail "cmake --install"; }
prefix=$(cd "$work/prefix" && pwd -P)
app=$prefix/lib/orvex-config-manager

for f in "$app/orvex-config-manager" "$app/orvexctl"; do
    [ -x "$f" ] || fail "$f is not an installed executable"
    if ldd "$f" | grep -q "not found"; then fail "$f lacks libraries"; fi
done
for f in orvex/default/schema-userconf.xsd orvex/default/tracking-default.conf \
         orvex/default/survey-default.conf orvex/default/photometry-default.conf \
         orvex/conf/example.conf; do
    [ -f "$app/$f" ] || fail "$app/$f is missing"
done
[ -f "$prefix/share/doc/orvex-config-manager/schema-guide.md" ] || fail "schema guide missing"
[ -f "$prefix/share/doc/orvex-config-manager/orvexctl.md" ] || fail "orvexctl.md missing"
man=$prefix/share/man/man1/orvexctl.1.gz
[ -f "$man" ] || fail "orvexctl's manual page missing"
gzip -dc "$man" | grep -q '^\.SH "JSON OUTPUT"' || fail "the manual page lacks the JSON fields"

# The launchers are links that lead to the real executables, beside which the
# schema lies.
for program in orvex-config-manager orvexctl; do
    [ -L "$prefix/bin/$program" ] || fail "bin/$program is not a link"
    real=$(readlink -f "$prefix/bin/$program")
    [ "$real" = "$app/$program" ] || fail "bin/$program leads to $real"
    [ -f "$(dirname "$real")/orvex/default/schema-userconf.xsd" ] \
        || fail "no schema beside the real $program"
done

# The menu entry and its icon.
entry=$prefix/share/applications/orvex-config-manager.desktop
[ -f "$entry" ] || fail "no .desktop file"
grep -qx 'Type=Application' "$entry" || fail ".desktop: Type"
grep -qx 'Exec=orvex-config-manager %f' "$entry" || fail ".desktop: Exec"
grep -qx 'Icon=orvex-config-manager' "$entry" || fail ".desktop: Icon"
grep -q '^MimeType=.*application/xml;' "$entry" || fail ".desktop: MimeType"
icon=$prefix/share/icons/hicolor/32x32/apps/orvex-config-manager.png
[ -f "$icon" ] || fail "no icon"
# PNG signature, then the IHDR chunk with width and height 32.
[ "$(od -An -tx1 -N8 "$icon" | tr -d ' \n')" = "89504e470d0a1a0a" ] || fail "icon is no PNG"
[ "$(od -An -tx1 -j16 -N8 "$icon" | tr -d ' \n')" = "0000002000000020" ] || fail "icon is not 32x32"

# orvexctl, started through its launcher from elsewhere, finds the installed schema.
cd "$work"
"$prefix/bin/orvexctl" check-schema >check.txt 2>check.err || { cat check.err >&2; fail "installed check-schema"; }
head -n1 check.txt | grep -qx "Schema: $app/orvex/default/schema-userconf.xsd" \
    || fail "installed orvexctl reads $(head -n1 check.txt)"
"$prefix/bin/orvexctl" new tracking "$work/tracking.conf" || fail "installed orvexctl new"
"$prefix/bin/orvexctl" validate "$work/tracking.conf" >/dev/null || fail "installed orvexctl validate"

# The desktop program, started through its launcher with a configuration of
# the newest version, must still run two seconds later: a program that can't
# start (a missing library or platform plugin) ends at once. Its finding of the
# schema is shown above, by the file beside its real executable.
QT_QPA_PLATFORM=offscreen "$prefix/bin/orvex-config-manager" "$work/tracking.conf" \
    >desktop.log 2>&1 &
desktop_pid=$!
alive=0
while [ $alive -lt 20 ]; do
    kill -0 "$desktop_pid" 2>/dev/null || { cat desktop.log >&2; fail "the desktop program ended"; }
    sleep 0.1
    alive=$((alive + 1))
done
kill "$desktop_pid"
wait "$desktop_pid" 2>/dev/null || true
desktop_pid=

# ------------------------------------------------------------------ package
"$cpack" -G DEB --config "$build/CPackConfig.cmake" -B "$work/package" >cpack.log 2>&1 \
    || { cat cpack.log >&2; fail "cpack -G DEB"; }
set -- "$work"/package/orvex-config-manager_*_*.deb
[ $# -eq 1 ] && [ -f "$1" ] || fail "no single package in $work/package"
deb=$1

[ "$(dpkg-deb -f "$deb" Package)" = orvex-config-manager ] || fail "package name"
depends=$(dpkg-deb -f "$deb" Depends)
for lib in libqt5core5a libqt5gui5 libqt5widgets5 libqt5xml5 libqt5xmlpatterns5 libqt5network5; do
    echo "$depends" | grep -Eq "(^|, |\| )$lib( |,|$)" || fail "Depends lacks $lib: $depends"
done
if echo "$depends" | grep -q -- '-dev'; then fail "Depends names a -dev package: $depends"; fi

dpkg-deb -c "$deb" | awk '{ path = $6; if (NF > 6) path = path " " $7 " " $8; print path }' >contents.txt
for f in ./usr/lib/orvex-config-manager/orvex-config-manager \
         ./usr/lib/orvex-config-manager/orvexctl \
         ./usr/lib/orvex-config-manager/orvex/default/schema-userconf.xsd \
         ./usr/lib/orvex-config-manager/orvex/default/tracking-default.conf \
         ./usr/share/applications/orvex-config-manager.desktop \
         ./usr/share/icons/hicolor/32x32/apps/orvex-config-manager.png \
         ./usr/share/man/man1/orvexctl.1.gz; do
    grep -qx "$f" contents.txt || fail "package lacks $f"
done
for program in orvex-config-manager orvexctl; do
    grep -qx "./usr/bin/$program -> ../lib/orvex-config-manager/$program" contents.txt \
        || fail "package lacks the link bin/$program"
done

# The unpacked package works as installed.
dpkg-deb -x "$deb" "$work/unpacked"
"$work/unpacked/usr/bin/orvexctl" check-schema >/dev/null || fail "packaged orvexctl check-schema"

echo "install and package: all checks passed"
