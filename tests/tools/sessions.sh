#!/bin/sh
# Runs the sessions of a manual page and compares what they print with what the page shows.
#   sessions.sh PAGE FOLDER BIN PROGRAM...
# FOLDER holds the files of the sessions and is copied; BIN is a folder to work in; each PROGRAM is a
# command line by which one program can be called, its path last.
set -eu
page=$1 folder=$2 work=$3
shift 3

rm -rf "$work"
mkdir -p "$work/bin"
cp -R "$folder" "$work/files"
for program in "$@"; do
    name=$(basename "${program##* }")
    printf '#!/bin/sh\nexec %s "$@"\n' "$program" > "$work/bin/$name"
    chmod +x "$work/bin/$name"
done

# The commands behind "$ " become a script that repeats each before its output.
awk '/^```console$/ { inside = 1; next }
     /^```$/ { inside = 0 }
     inside' "$page" > "$work/expected"
sed -n 's/^\$ //p' "$work/expected" > "$work/commands"
[ -s "$work/commands" ] || { echo "no session in $page"; exit 1; }

PATH=$work/bin:$PATH
export PATH
cd "$work/files"
while IFS= read -r command; do
    printf '$ %s\n' "$command"
    sh -c "$command" 2>&1 < /dev/null || true
done < "$work/commands" > "$work/actual"
diff -u "$work/expected" "$work/actual"
