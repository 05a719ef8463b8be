#!/bin/sh
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# The manual pages that the build generates: the orvexctl page has a section
# for every command that "orvexctl --help" lists and names every option that
# a command's --help names; both pages have the sections they promise and
# render without a warning of man.
# Usage: man_pages.sh ORVEXCTL MAN_DIR
set -eu
ctl=$1
man_dir=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

for page in orvexctl orvex-config-manager; do
    gzip -t "$man_dir/$page.1.gz" || fail "$page.1.gz is no gzip file"
    gzip -dc "$man_dir/$page.1.gz" >"$work/$page.1"
    LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l "$work/$page.1" \
        >"$work/$page.txt" 2>"$work/$page.warnings" || fail "man cannot render $page"
    [ ! -s "$work/$page.warnings" ] || { cat "$work/$page.warnings" >&2; fail "man warns on $page"; }
done

page=$work/orvexctl.1
"$ctl" --help | sed -n '/^Commands:$/,/^$/s/^  \([a-z][a-z0-9-]*\).*/\1/p' >"$work/commands"
[ -s "$work/commands" ] || fail "orvexctl --help lists no command"
while read -r command; do
    # roff writes each "-" of the page as "\-".
    escaped=$(echo "$command" | sed 's/-/\\\\-/g')
    grep -q "^\.SS \"orvexctl $escaped[ \"]" "$page" || fail "the page lacks the command $command"
    "$ctl" "$command" --help | grep -oE '(^|[ [(])--?[a-z][a-z-]*' | sed 's/^[ [(]//' | sort -u |
        while read -r option; do
            escaped=$(echo "$option" | sed 's/-/\\\\-/g')
            grep -q -- "$escaped" "$page" || fail "the page lacks $option of $command"
        done
done <"$work/commands"

for section in SYNOPSIS DESCRIPTION COMMANDS "EXIT STATUS" FILES EXAMPLES "SEE ALSO"; do
    grep -q "^\.SH \"\?$section\"\?$" "$page" || fail "orvexctl.1 lacks $section"
done
for status in 0 1 2; do
    sed -n '/^\.SH "EXIT STATUS"/,/^\.SH/p' "$page" | grep -qx "\.B $status" \
        || fail "EXIT STATUS lacks $status"
done

text=$work/orvex-config-manager.txt
for section in NAME SYNOPSIS DESCRIPTION FILES "SEE ALSO"; do
    grep -q "^$section" "$text" || fail "orvex-config-manager.1 lacks $section"
done
grep -q "orvex-config-manager \[CONFIG\]" "$text" || fail "orvex-config-manager.1: synopsis"
grep -q "examples/example.conf" "$text" || fail "orvex-config-manager.1: the older example"
grep -q "writable" "$text" || fail "orvex-config-manager.1: copy the older example first"

echo "manual pages: $(wc -l <"$work/commands") commands, all checks passed"
