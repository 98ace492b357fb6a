#!/bin/sh
# Checks documents against the schema of configurations.
#   validate.sh SCHEMA accepts|refuses DOCUMENT...
schema=$1 wanted=$2
shift 2
command -v xmllint > /dev/null || { echo "skipped: no xmllint"; exit 0; }

status=0
for document in "$@"; do
    found=refuses
    message=$(xmllint --noout --relaxng "$schema" "$document" 2>&1) && found=accepts
    if [ "$found" != "$wanted" ]; then
        printf '%s %s\n%s\n' "$found" "$document" "$message"
        status=1
    fi
done
exit $status
