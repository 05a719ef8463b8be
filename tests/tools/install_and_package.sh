#!/bin/sh
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installs the build into a temporary prefix and runs both installed programs
# from there, checks the manual pages, the completion, the desktop files and
# the examples, then builds the Debian package and checks its files and its
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
         orvex/conf/tracking-example.conf orvex/conf/photometry-example.conf; do
    [ -f "$app/$f" ] || fail "$app/$f is missing"
done
doc=$prefix/share/doc/orvex-config-manager
for f in schema-guide.md user-guide.md orvexctl.md copyright changelog.gz examples/example.conf; do
    [ -f "$doc/$f" ] || fail "$doc/$f is missing"
done
gzip -dc "$doc/changelog.gz" | head -n1 | grep -q '^orvex-config-manager (' || fail "changelog.gz"
grep -q '^Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/$' \
    "$doc/copyright" || fail "copyright is not machine-readable"

# The Open dialog starts in the read-only orvex/conf, where a file of an older
# version could not be written back: only the documentation has one.
[ ! -e "$app/orvex/conf/example.conf" ] || fail "the older example lies in orvex/conf"
for f in "$app"/orvex/conf/*; do
    case $f in *.conf) ;; *) fail "$f is no configuration" ;; esac
    "$prefix/bin/orvexctl" update "$f" -o "$work/updated.conf" 2>"$work/update.err" \
        || { cat "$work/update.err" >&2; fail "installed orvexctl update $f"; }
    [ ! -e "$work/updated.conf" ] || fail "$f is not at the newest version"
done
"$prefix/bin/orvexctl" update "$doc/examples/example.conf" -o "$work/updated.conf" >/dev/null \
    || fail "the older example cannot be updated"
[ -f "$work/updated.conf" ] || fail "the older example is at the newest version"

# The manual pages, gzipped, and the completion as the program prints it.
for page in orvex-config-manager orvexctl; do
    gzip -t "$prefix/share/man/man1/$page.1.gz" || fail "no manual page $page.1.gz"
done
gzip -dc "$prefix/share/man/man1/orvexctl.1.gz" | grep -q '^\.SH "JSON OUTPUT"' \
    || fail "the manual page lacks the JSON fields"
"$prefix/bin/orvexctl" completion bash | cmp -s - "$prefix/share/bash-completion/completions/orvexctl" \
    || fail "the installed completion differs from what orvexctl prints"

# The launchers are links that lead to the real executables, beside which the
# schema lies.
for program in orvex-config-manager orvexctl; do
    [ -L "$prefix/bin/$program" ] || fail "bin/$program is not a link"
    real=$(readlink -f "$prefix/bin/$program")
    [ "$real" = "$app/$program" ] || fail "bin/$program leads to $real"
    [ -f "$(dirname "$real")/orvex/default/schema-userconf.xsd" ] \
        || fail "no schema beside the real $program"
done

# The menu entry, named after the AppStream id, offers the program for its
# own type of file only, which the MIME database learns from the package.
id=org.orvex_observatory.ConfigManager
entry=$prefix/share/applications/$id.desktop
[ -f "$entry" ] || fail "no .desktop file"
grep -qx 'Type=Application' "$entry" || fail ".desktop: Type"
grep -qx 'Exec=orvex-config-manager %f' "$entry" || fail ".desktop: Exec"
grep -qx 'Icon=orvex-config-manager' "$entry" || fail ".desktop: Icon"
grep -qx 'MimeType=application/x-orvex-config;' "$entry" || fail ".desktop: MimeType"
grep -q "<id>$id</id>" "$prefix/share/metainfo/$id.metainfo.xml" || fail "no metainfo of $id"
mkdir -p "$work/mime/packages"
cp "$prefix/share/mime/packages/orvex-config-manager.xml" "$work/mime/packages/"
XDG_DATA_HOME=$work XDG_DATA_DIRS=/usr/share update-mime-database "$work/mime" >"$work/mime.log" 2>&1 || { cat "$work/mime.log" >&2; fail "MIME database"; }
[ ! -s "$work/mime.log" ] || { cat "$work/mime.log" >&2; fail "the MIME type has faults"; }
[ -f "$work/mime/application/x-orvex-config.xml" ] || fail "the MIME type is not in the database"

# The icons: PNG signature, then the IHDR chunk with width and height.
for size in 16 32 48 64 128 256; do
    icon=$prefix/share/icons/hicolor/${size}x${size}/apps/orvex-config-manager.png
    [ -f "$icon" ] || fail "no ${size}x${size} icon"
    [ "$(od -An -tx1 -N8 "$icon" | tr -d ' \n')" = "89504e470d0a1a0a" ] || fail "$icon is no PNG"
    [ "$(od -An -tx1 -j16 -N8 "$icon" | tr -d ' \n')" = "$(printf '%08x%08x' "$size" "$size")" ] \
        || fail "$icon is not ${size}x${size}"
done
grep -q '<svg' "$prefix/share/icons/hicolor/scalable/apps/orvex-config-manager.svg" \
    || fail "no scalable icon"

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
         ./usr/share/applications/org.orvex_observatory.ConfigManager.desktop \
         ./usr/share/metainfo/org.orvex_observatory.ConfigManager.metainfo.xml \
         ./usr/share/mime/packages/orvex-config-manager.xml \
         ./usr/share/icons/hicolor/32x32/apps/orvex-config-manager.png \
         ./usr/share/icons/hicolor/scalable/apps/orvex-config-manager.svg \
         ./usr/share/man/man1/orvexctl.1.gz \
         ./usr/share/man/man1/orvex-config-manager.1.gz \
         ./usr/share/bash-completion/completions/orvexctl \
         ./usr/share/doc/orvex-config-manager/copyright \
         ./usr/share/doc/orvex-config-manager/changelog.gz \
         ./usr/share/doc/orvex-config-manager/examples/example.conf; do
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
