#!/bin/sh
# Repeats what a page shows of a shell: prints each "$ command" line of the file and runs the command.
status=0
while IFS= read -r line <&3; do
    case $line in
        '$ '*)
            printf '%s\n' "$line"
            eval "(exit $status)
${line#??}" 3<&-
            status=$?
            ;;
    esac
done 3<"$1" 2>&1
