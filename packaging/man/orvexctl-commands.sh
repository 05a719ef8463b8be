#!/bin/sh
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Writes the COMMANDS section of the orvexctl manual page, as help2man takes
# it, from the program itself: every command that "orvexctl --help" lists,
# with what "orvexctl COMMAND --help" tells of it.
# Usage: orvexctl-commands.sh OUTPUT ORVEXCTL... (the command that runs orvexctl)
set -eu
out=$1
shift

# roff: backslashes shown as such, minus signs, no line taken for a request.
escape() {
    sed -e 's/\\/\\e/g' -e 's/-/\\-/g' -e "s/^\([.']\)/\\\\\&\1/"
}

# One command's help: its synopsis as the heading, option lines ("  --x  text")
# as tagged paragraphs, the rest as filled text.
section() {
    awk '
        NR == 1 { sub(/^Usage: /, ""); printf ".SS \"%s\"\n", $0; next }
        /^$/ { if (started) print ".PP"; option = 0; next }
        /^  +\\-/ {
            sub(/^ +/, "")
            head = $0; text = ""
            if (match($0, /  +/)) { head = substr($0, 1, RSTART - 1); text = substr($0, RSTART + RLENGTH) }
            printf ".TP\n.B \"%s\"\n", head
            if (text != "") print text
            option = 1; started = 1; next
        }
        option && /^   / { sub(/^ +/, ""); print; next }
        { option = 0; started = 1; print }
    '
}

{
    echo "[COMMANDS]"
    "$@" --help | sed -n '/^Commands:$/,/^$/s/^  \([a-z][a-z0-9-]*\).*/\1/p' |
        while read -r name; do
            "$@" "$name" --help | escape | section
        done
} >"$out"
