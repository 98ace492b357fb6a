#!/bin/sh
# Runs the shell sessions of a document and compares what they print with what the document shows.
#   sessions.sh DOCUMENT FOLDER WORK PROGRAM...
# FOLDER holds files of the sessions and is copied; "-" is none. WORK is a folder to work in, made
# anew; each PROGRAM is a command line by which one program can be called, its path last. The blocks
# of the document that a comment "file: NAME" stands before become files of the sessions, too.
set -eu
document=$1 folder=$2 work=$3
shift 3

rm -rf "$work"
mkdir -p "$work/bin" "$work/files"
[ "$folder" = - ] || cp -R "$folder/." "$work/files"
for program in "$@"; do
    name=$(basename "${program##* }")
    printf '#!/bin/sh\nexec %s "$@"\n' "$program" > "$work/bin/$name"
    chmod +x "$work/bin/$name"
done

awk -v folder="$work/files/" '
    /^<!-- file: / && !inside { name = $3 }
    /^```$/ && inside { inside = 0; if (name) close(folder name); name = ""; next }
    inside && name { print > (folder name) }
    /^```/ && !inside {
        inside = 1
        if (name ~ /\//) {
            path = name
            sub(/\/[^\/]*$/, "", path)
            system("mkdir -p \"" folder path "\"")
        }
    }' "$document"

# The commands behind "$ " become a script that repeats each before its output.
awk '/^```console$/ { inside = 1; next }
     /^```$/ { inside = 0 }
     inside' "$document" > "$work/expected"
sed -n 's/^\$ //p' "$work/expected" > "$work/commands"
[ -s "$work/commands" ] || { echo "no session in $document"; exit 1; }

PATH=$work/bin:$PATH
export PATH
cd "$work/files"
while IFS= read -r command; do
    printf '$ %s\n' "$command"
    sh -c "$command" 2>&1 < /dev/null || true
done < "$work/commands" > "$work/actual"
diff -u "$work/expected" "$work/actual"
