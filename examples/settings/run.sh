#!/bin/sh
# Changes a copy of the settings and shows it: run.sh PROGRAM...
set -eu
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
cp "$(dirname "$0")/settings.xml" "$folder"
"$@" "$folder/settings.xml" volume -18
cat "$folder/settings.xml"
