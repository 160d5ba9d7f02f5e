# SPDX-License-Identifier: Apache-2.0
# Completion of brackwell for bash, written by script/completions.

_brackwell_commands="show json csv report convert accounts duplicates payees check tree pretty repair anonymize request"

# The options that a command takes.
_brackwell_options() {
    case $1 in
        "") echo "-h --help --version" ;;
        show) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --full --color --no-pager --since --until --account --search --sort" ;;
        json) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --indent --since --until --account --search --sort" ;;
        csv) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --kind --currencies --columns --delimiter --decimal-mark --decimals --days --raw --unique --since --until --account --search --sort" ;;
        report) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --full --since --until --account --search --sort" ;;
        convert) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --to --accounts --unless --no-opening-balances --no-assertions" ;;
        accounts) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --full --color --no-pager" ;;
        duplicates) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --full --color --no-pager" ;;
        payees) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --color --no-pager --since --until --account --search --sort" ;;
        check) echo "-h --help --encoding -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is" ;;
        tree) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is --original" ;;
        pretty) echo "-h --help --encoding -o --output --force -q --quiet --strict --date-format --decimal-separator --grouping-separator --as-is" ;;
        repair) echo "-h --help --encoding -o --output --force -q --quiet --strict --diff --all" ;;
        anonymize) echo "-h --help --encoding -o --output --force -q --quiet --strict --into --institution --shift-days" ;;
        request) echo "-h --help -o --output --force --version --since --document --routing" ;;
    esac
}

# What can follow an option of a command; nothing where anything can, "FILE" for a file. False for an option without a
# value.
_brackwell_values() {
    case $2 in
        --encoding) [[ " show json csv report convert accounts duplicates payees check tree pretty repair anonymize " == *" $1 "* ]] && echo "auto ASCII UTF-8 ISO-8859-1 UTF-16 windows-1252 UTF-16BE UTF-16LE UTF-32BE UTF-32LE UTF-32 ISO-8859-2 ISO-8859-15 windows-1250 windows-1251 KOI8-R windows-1253 windows-1254 macintosh EUC-JP Shift_JIS ISO-2022-JP" ;;
        -o) [[ " show json csv report convert accounts duplicates payees tree pretty repair anonymize request " == *" $1 "* ]] && echo "FILE" ;;
        --output) [[ " show json csv report convert accounts duplicates payees tree pretty repair anonymize request " == *" $1 "* ]] && echo "FILE" ;;
        --date-format) [[ " show json csv report convert accounts duplicates payees check tree pretty " == *" $1 "* ]] ;;
        --decimal-separator) [[ " show json csv report convert accounts duplicates payees check tree pretty " == *" $1 "* ]] ;;
        --grouping-separator) [[ " show json csv report convert accounts duplicates payees check tree pretty " == *" $1 "* ]] ;;
        --color) [[ " show accounts duplicates payees " == *" $1 "* ]] && echo "auto always never" ;;
        --since) [[ " show json csv report payees request " == *" $1 "* ]] ;;
        --until) [[ " show json csv report payees " == *" $1 "* ]] ;;
        --account) [[ " show json csv report payees " == *" $1 "* ]] ;;
        --search) [[ " show json csv report payees " == *" $1 "* ]] ;;
        --sort) [[ " show json csv report payees " == *" $1 "* ]] && echo "date amount" ;;
        --kind) [[ " csv " == *" $1 "* ]] && echo "bank investments positions securities" ;;
        --columns) [[ " csv " == *" $1 "* ]] ;;
        --delimiter) [[ " csv " == *" $1 "* ]] ;;
        --decimal-mark) [[ " csv " == *" $1 "* ]] && echo ". ," ;;
        --to) [[ " convert " == *" $1 "* ]] && echo "hledger ledger beancount" ;;
        --accounts) [[ " convert " == *" $1 "* ]] && echo "FILE" ;;
        --unless) [[ " convert " == *" $1 "* ]] && echo "FILE" ;;
        --into) [[ " anonymize " == *" $1 "* ]] && echo "FILE" ;;
        --shift-days) [[ " anonymize " == *" $1 "* ]] ;;
        --version) [[ " request " == *" $1 "* ]] && echo "102 103 151 160 200 203 211 220" ;;
        --routing) [[ " request " == *" $1 "* ]] && echo "none service msgset" ;;
        *) return 1 ;;
    esac
}

# What a command is given besides options.
_brackwell_arguments() {
    case $1 in
        request) echo "accounts profile" ;;
        *) echo "FILE" ;;
    esac
}

# Offers those of some words that begin with a text, or the files that do, besides what is offered already.
_brackwell_offer() {
    if [[ $1 == FILE ]]; then
        # Outside of a completion, as in a test, there is nothing to set.
        compopt -o filenames 2>/dev/null
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$2")
    else
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -W "$1" -- "$2")
    fi
}

_brackwell() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command="" values
    # Bash takes "--sort=da" for three words.
    if [[ $current == "=" ]]; then
        current=""
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    if ((COMP_CWORD > 1)); then
        command=${COMP_WORDS[1]}
        # A file in the place of a command is shown.
        [[ " $_brackwell_commands " == *" $command "* ]] || command=show
    fi
    COMPREPLY=()
    if [[ -n $command ]] && values=$(_brackwell_values "$command" "$previous"); then
        _brackwell_offer "$values" "$current"
    elif [[ $current == -* ]]; then
        _brackwell_offer "$(_brackwell_options "$command")" "$current"
    elif [[ -z $command ]]; then
        _brackwell_offer "$_brackwell_commands" "$current"
        [[ -z $current ]] || _brackwell_offer FILE "$current"
    else
        _brackwell_offer "$(_brackwell_arguments "$command")" "$current"
    fi
}

complete -F _brackwell brackwell
