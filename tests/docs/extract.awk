# Makes C++ files of the C++ samples of a document. Those with a function main give a file each, the
# others become functions in one file together.
#   awk -f extract.awk -v page=docs/paths.md -v stem=build/docs_paths docs/paths.md

function open_file(path) {
    file = path
    printf "// Made of the samples of %s.\n#include \"docs/programs.h\"\n", page > file
}

function put(text) {
    print text > file
}

# The text of a sample, main as a function of its own name, in a namespace of its own.
function put_program(number, count,    i, behind, in_main) {
    for (i = 1; i <= count; i++) {
        if (lines[i] ~ /^#include/) {
            behind = i
        }
    }
    for (i = 1; i <= behind; i++) {
        put(lines[i])
    }
    if (!behind) {
        put("#include <iostream>\n#include \"kobase.h\"")
    }
    put("namespace sample_" number " {")
    put("#line " number + behind + 1 " \"" page "\"")
    for (i = behind + 1; i <= count; i++) {
        if (lines[i] ~ /^int main\(\) \{/) {
            sub(/int main/, "int program", lines[i])
            in_main = 1
        } else if (in_main && lines[i] == "}") {
            lines[i] = "return 0; }"
            in_main = 0
        }
        put(lines[i])
    }
    put("}")
    put("namespace { const docs::registered_t sample(\"" page "\", " number \
        ", [] { sample_" number "::program(); }); }")
    close(file)
}

# Statements, behind what their document has in a comment before them.
function take_statements(number, count, continues,    i) {
    if (!continues) {
        samples++
        starts[samples] = number
    }
    for (i = 1; i <= befores; i++) {
        if (before[i] ~ /^#include/) {
            headers[before[i]] = 1
        } else {
            code[samples] = code[samples] before[i] "\n"
        }
    }
    code[samples] = code[samples] "#line " number + 1 " \"" page "\"\n"
    for (i = 1; i <= count; i++) {
        code[samples] = code[samples] lines[i] "\n"
    }
}

function take(number, count,    i) {
    for (i = 1; i <= count; i++) {
        if (lines[i] ~ /^int main\(/) {
            open_file(stem "_" number ".cpp")
            put_program(number, count)
            return
        }
    }
    take_statements(number, count, continues)
}

/^```/ && !inside {
    inside = 1
    opened = NR
    language = substr($0, 4)
    count = 0
    next
}
/^```$/ {
    inside = 0
    if (language == "cpp" && !same) {
        take(opened, count)
    }
    befores = continues = same = 0
    next
}
inside {
    lines[++count] = $0
    next
}
/^<!-- continues -->$/ { continues = 1; next }
/^<!-- same as:/ { same = 1; next }
/^<!-- before$/ { in_before = 1; next }
in_before && /^-->$/ { in_before = 0; next }
in_before { before[++befores] = $0; next }
/./ && !/^<!--/ { befores = continues = same = 0 }

END {
    if (!samples) {
        exit
    }
    open_file(stem ".cpp")
    for (header in headers) {
        put(header)
    }
    put("#include <iostream>\n#include \"kobase.h\"\nnamespace {\nusing namespace ko;")
    for (i = 1; i <= samples; i++) {
        put("void sample_" starts[i] "() {\n" code[i] "}")
        put("const docs::registered_t registered_" starts[i] "(\"" page "\", " starts[i] ", sample_" \
            starts[i] ");")
    }
    put("}")
}
