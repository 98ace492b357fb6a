#!/bin/sh
# A diagnostic has colours on a terminal, unless NO_COLOR is set or the terminal has none.
#   colours.sh FOLDER PROGRAM...
# FOLDER is made anew; PROGRAM is the command line of kobase-xpp.
set -eu
folder=$1
shift
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
if ! command -v script > /dev/null; then
    echo 'skipped: there is no program "script" that makes a terminal'
    exit 0
fi
echo '<open>' > open.xml
printf '#!/bin/sh\nexec' > xpp
for word in "$@" open.xml; do
    printf " '%s'" "$word" >> xpp
done
chmod +x xpp

# What the program writes to a terminal, with "@" for the escape character.
# Usage: shown VARIABLE=VALUE...
shown() {
    env -u NO_COLOR "$@" script -qec ./xpp /dev/null < /dev/null | tr -d '\r' | tr '\033' '@'
}

# Usage: expect TEXT VARIABLE=VALUE...
expect() {
    wanted=$1
    shift
    text=$(shown "$@")
    [ "$text" = "$wanted" ] || {
        echo "with $*: $text"
        exit 1
    }
}

plain='open.xml:2:1: error: no element found'
expect '@[1mopen.xml:2:1: @[31merror: @[0mno element found' TERM=xterm
expect "$plain" TERM=xterm NO_COLOR=1
expect "$plain" TERM=dumb
