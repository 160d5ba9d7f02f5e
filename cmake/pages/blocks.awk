# Takes the code blocks out of a Markdown page into files of the folder `out`, named by the line of
# the block, and prints what is to be done with them: "build LINE" for a program; and, to run them,
# "program LINE", "snippet LINE", "session LINE PROGRAM NAME" or "project LINE PROGRAM". pages.cmake
# says what the blocks mean.

function fail(text) {
    print FILENAME ":" opened ": " text >"/dev/stderr"
    exit failed = 1
}

# The code before has no output in the page.
function nothing_printed() {
    if (!code) return
    if (kind == "program") fail("no block runs the program before this one")
    expect("")
}

function expect(text) {
    printf "%s", text >(out "/" code ".expected")
    print kind, code
    code = 0
}

function write_cpp() {
    nothing_printed()
    code = opened + 1
    kind = block ~ /int main\(/ ? "program" : "snippet"
    place = "#line " code " \"" FILENAME "\"\n"
    if (kind == "program") {
        program = code
        printf "%s%s", place, block >(out "/" code ".cpp")
        print "build", code
    } else {
        functions = functions "static void line" code "() {\n" place block "}\n"
        calls = calls "    if (line == " code ") line" code "();\n"
    }
}

function write_session(name) {
    if (match(block, /\$ \.\/[a-z_]+/)) {
        if (!program) fail("no program stands before this session")
        name = substr(block, RSTART + 4, RLENGTH - 4)
        if (code == program) code = 0
    }
    printf "%s", block >(out "/" opened + 1 ".expected")
    print "session", opened + 1, program, name
}

function write_project() {
    if (!program) fail("no program stands before this project")
    printf "%s", block >(out "/" opened + 1 ".cmake")
    print "project", opened + 1, program
}

inside && /^```$/ {
    inside = 0
    if (language == "cpp") write_cpp()
    else if (language == "text" && code) expect(block)
    else if (language == "console") write_session()
    else if (language == "cmake") write_project()
    # What Python shows at its prompt is run by the tests of the package.
    else if (language != "mermaid" && language != "pycon") fail("no rule for a block of \"" language "\" here")
    next
}
inside { block = block $0 "\n" }
!inside && /^```/ {
    inside = 1
    language = substr($0, 4)
    opened = NR
    block = ""
}

END {
    if (failed) exit 1
    if (inside) fail("this block has no end")
    nothing_printed()
    if (!functions) exit
    frame = "#include <brackwell/brackwell.h>\n\n#include <iostream>\n\nusing namespace brackwell;\n\n"
    printf "%s%s#line 1 \"snippets\"\nint main(int, char** arguments) {\n    const int line = std::atoi(arguments[1]);\n%s}\n",
        frame, functions, calls >(out "/snippets.cpp")
}
