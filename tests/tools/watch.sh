#!/bin/sh
# A document that is watched is processed again when it or an included file changes, goes through an
# error, and ends with status 0 at an interrupt.
#   watch.sh FOLDER PROGRAM...
# FOLDER is made anew; PROGRAM is the command line of kobase-xpp.
set -eu
folder=$1
shift
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"

fail() {
    echo "$*"
    cat log
    kill "$pid" 2>/dev/null || true
    exit 1
}

# Waits until a file holds a text. Usage: expect FILE TEXT
expect() {
    tries=0
    until grep -qF -e "$2" "$1" 2>/dev/null; do
        tries=$((tries + 1))
        [ "$tries" -lt 300 ] || fail "$1 does not come to hold $2"
        sleep 0.1
    done
}

write_part() {
    echo "<part><channel id=\"$1\"/></part>" > part.xml
}

write_part one
echo '<rack xmlns:x="kobase.org/xmlns/xmlpreprocessor"><x:include file="part.xml"/></rack>' > rack.xml
"$@" --watch -o out.xml rack.xml 2> log &
pid=$!
expect out.xml 'id="one"'
write_part two
expect out.xml 'id="two"'
echo '<part>' > part.xml
expect log 'part.xml:2:1: error: no element found'
expect out.xml 'id="two"'
write_part three > part.new
mv part.xml part.old
write_part four
expect out.xml 'id="four"'
sed 's/rack/shelf/g' rack.xml > rack.new
mv rack.new rack.xml
expect out.xml '<shelf'
kill -INT "$pid"
status=0
wait "$pid" || status=$?
[ "$status" = 0 ] || fail "status $status at an interrupt"
