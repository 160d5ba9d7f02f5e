# Gives every declaration of a group a comment of its own, so that each has a line in the summaries of the
# site. In the headers one comment stands above several declarations:
#
#     /// @{
#     /// The comment.
#     int one() const;
#     int two() const;
#     /// @}
#
# In a summary Doxygen would write it for none of them. Here it is put before each declaration that has none
# of its own, into the declaration's line, so that a warning still names the line of the header.

function depth_of(line) { return gsub(/[({]/, "", line) - gsub(/[)}]/, "", line) }

# Prints a line of code in a group, with the comment when a declaration begins there.
function write_code(line) {
    if (begins && line !~ /\/\/\/</ && !has_own) printf "/** %s */ ", comment
    print line
    depth += depth_of(line)
    begins = depth == 0 && line ~ /[;}]( *\/\/.*)?$/
    has_own = has_own && !begins
    has_code = 1
}

/^ *\/\/\/ @\{$/ {
    inside = begins = 1
    has_code = has_own = depth = 0
    comment = ""
    print ""
    next
}
inside && /^ *\/\/\/ @\}$/ {
    inside = 0
    print ""
    next
}
inside && /^ *\/\/\// {
    if (has_code) {
        has_own = 1
        print
        next
    }
    sub(/^ *\/\/\/ ?/, "")
    comment = comment (comment == "" ? "" : " ") ($0 == "" ? "<p>" : $0)
    print ""
    next
}
inside && NF {
    write_code($0)
    next
}
{ print }
