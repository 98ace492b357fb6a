# shellcheck shell=bash disable=SC2154
# The parts of the manual's site; sourced. Stands on common.sh.

# What building the site needs.
# shellcheck disable=SC2034
site_packages=(doxygen linkchecker mkdocs mkdocs-material)

# The pages in one folder: those of docs/, and those of the top folder under names of the site. Links
# between the two are put right.
pages_gather() {
    local pages=build/docs/pages
    mkdir -p "$pages"
    cp docs/*.md docs/*.svg docs/site/*.css docs/site/api-reference.md "$pages" 2>/dev/null || true
    cp README.md "$pages/index.md"
    cp CHANGELOG.md "$pages/changelog.md"
    cp SECURITY.md "$pages/security-policy.md"
    cp CONTRIBUTING.md "$pages/contributing.md"
    cp tests/README.md "$pages/tests.md"
    sed -i -E 's#\]\((\.\./)?tests/README\.md#](tests.md#g
               s#\]\((docs|\.\./docs)/#](#g; s#\]\((\.\./)?README\.md#](index.md#g
               s#\]\((\.\./)?CHANGELOG\.md#](changelog.md#g
               s#\]\((\.\./)?CONTRIBUTING\.md#](contributing.md#g
               s#\]\((\.\./)?SECURITY\.md#](security-policy.md#g
               s#src="docs/#src="#g' "$pages"/*.md
    # In a table mkdocs takes a bar inside of code as it is, where others want it escaped.
    sed -i '/^|/s/\\|/|/g' "$pages"/*.md
}

# The public headers: what kobase.h reaches.
public_headers() {
    g++ -std=c++17 -MM -I src src/kobase.h | grep -o 'src/[^ ]*\.h' | sort -u
}

# Classes with the member names of a standard container say so instead of describing each member.
containers='(attribute_map|attribute_set|child_list|element_set|named_children)\.h'

# Fails where Doxygen has something to say, as far as it is that of Debian 12: what is found differs
# between its versions. Usage: reference_build FOLDER
reference_build() {
    local warnings=$root/build/docs/doxygen-warnings
    mkdir -p "$1"
    {
        cat docs/site/Doxyfile
        echo "INPUT = $(public_headers | tr '\n' ' ')"
        echo "OUTPUT_DIRECTORY = $1"
        echo "WARN_LOGFILE = $warnings"
    } >build/docs/Doxyfile
    quietly docs-doxygen doxygen build/docs/Doxyfile
    if [[ $(doxygen --version) == 1.9.4* ]] &&
        grep -vE "/$containers:.* is not documented" "$warnings" | sed "s#^$root/##" >&2; then
        return 1
    fi
}

links_check() {
    # Started by root, LinkChecker goes on as "nobody", who may not see the folder of the project.
    local copy status=0
    copy=$(mktemp -d)
    chmod 755 "$copy"
    cp -r build/docs/site "$copy"
    quietly docs-links linkchecker --no-status -f docs/site/linkcheckerrc \
        --ignore-url='^https?:' --no-follow-url='/api/' "$copy/site/index.html" || status=$?
    rm -rf "$copy"
    return $status
}
