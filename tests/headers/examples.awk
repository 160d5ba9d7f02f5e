# Makes a function of each block of code in the comments of the headers: lines that are indented by five
# blanks. A statement that is left open ("...") does nothing.

BEGIN { print "#include \"frame.h\"\n" }

/^ *\/\/\/     / {
    sub(/^ *\/\/\/     /, "")
    sub(/ \.\.\.$/, " {}")
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

END {
    if (!count) {
        print "no header has an example" >"/dev/stderr"
        exit 1
    }
}
