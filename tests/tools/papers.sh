#!/bin/bash
# Compares the options that a program shows with those of its manual page and of its completion.
#   papers.sh SOURCE NAME PROGRAM...
# SOURCE is the folder of the project; PROGRAM is the command line of the program NAME.
set -euo pipefail
source=$1 name=$2
shift 2
page=$source/docs/man/$name.1
completion=$source/tools/completion/$name
mapfile -t options < <("$@" --help | grep -oE -e '(^| |,)--?[A-Za-z][-a-z]*' | tr -d ' ,' | sort -u)
[ ${#options[@]} -gt 8 ] || {
    echo "$name --help shows no options"
    exit 1
}
status=0
for option in "${options[@]}"; do
    if ! grep -qF -e "${option//-/\\-}" "$page"; then
        echo "$page lacks $option"
        status=1
    fi
    if ! grep -qE -e "(^|[ '])$option( |'|$)" "$completion"; then
        echo "$completion lacks $option"
        status=1
    fi
done

# What the completion proposes. Usage: proposed WORD...
proposed() {
    COMP_WORDS=("$name" "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    "_${name//-/_}"
    echo "${COMPREPLY[*]}"
}

# Usage: expect PROPOSALS WORD...
expect() {
    local proposals
    proposals=$(proposed "${@:2}")
    if [ "$proposals" != "$1" ]; then
        echo "completion of ${*:2}: $proposals, not $1"
        status=1
    fi
}

# shellcheck disable=SC1090
source "$completion"
expect --version --vers
expect --include-dir --inc
expect '' -D n
if [ "$name" = kobase-xpp ]; then
    expect 'library standard' --output-format ''
    expect sarif --diagnostics = s
    expect '--max-elements --max-passes' --max
    cd "$source/examples"
    expect amplifier_rack_service.out.xml amplifier_rack_
fi
exit $status
