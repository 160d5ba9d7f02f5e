# Makes a function of each block of code in the comments of a header: lines that are indented by five blanks.
# Headers that a block begins with are included. A statement that is left open ("...") does nothing.

/^ *\/\/\/     / {
    sub(/^ *\/\/\/     /, "")
    sub(/ \.\.\.$/, " {}")
    if (/^#include/) {
        print
        next
    }
    if (!inside) {
        ++count
        printf "static void example%d() {\n#line %d \"%s\"\n", count, FNR, FILENAME
    }
    inside = 1
    print
    next
}
inside {
    inside = 0
    print "}\n"
}
