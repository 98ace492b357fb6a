#!/bin/sh
# What a person types into kobase-calc: an error does not end the session, words are commands, a
# comment goes on over lines; with line editing, names are completed and lines come back.
#   terminal.sh FOLDER EDITING PROGRAM...
# FOLDER is made anew; EDITING is 1 where the program was built with line editing; PROGRAM is the
# command line of kobase-calc.
set -eu
folder=$1 editing=$2
shift 2
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
if ! command -v script > /dev/null; then
    echo 'skipped: there is no program "script" that makes a terminal'
    exit 0
fi
printf '#!/bin/sh\nexec' > calc
for word in "$@" -m 'area(r)=r*r' -m PI=3; do
    printf " '%s'" "$word" >> calc
done
chmod +x calc
KOBASE_CALC_HISTORY=$folder/history TERM=dumb
export KOBASE_CALC_HISTORY TERM

# Types lines into a session. The pause keeps what is typed out of what was there before the prompt.
# Usage: session LINES > SCREEN
session() {
    (
        sleep 1
        printf '%b' "$1"
        sleep 1
        printf '\004'
    ) | script -qec ./calc /dev/null | tr -d '\r'
}

# Usage: expect FILE TEXT
expect() {
    grep -qF -e "$2" "$1" || {
        echo "no \"$2\" in:"
        cat "$1"
        exit 1
    }
}

session 'volume = 6\n2 * y\nvolume * 7 /* over\nlines */ + 1\nvars\nmacros\nfunctions\nhelp\n' > screen
expect screen '(i) 6'
expect screen "access to undefined term, 'y'"
expect screen '(i) 43'
expect screen 'volume = (i) 6'
expect screen 'PI = 3'
expect screen 'area( r ) = r*r'
expect screen 'func_output'
expect screen 'control-D ends'
if [ "$editing" = 1 ]; then
    expect history 'volume'
    session 'volume = 5\nvol\t + 100\n' > screen
    expect screen '(i) 105'
fi
