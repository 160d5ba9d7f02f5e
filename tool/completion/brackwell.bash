# SPDX-License-Identifier: Apache-2.0
# Completion of brackwell for bash.

# The options that a command takes.
_brackwell_options() {
    local output="--output -o --force"
    local file="--encoding --quiet -q --strict"
    local reading="$file --date-format --decimal-separator --grouping-separator --as-is"
    local transactions="--since --until --account --search --sort"
    case $1 in
        "") echo "--help -h --version" ;;
        show | report) echo "$reading $output $transactions --full --help -h" ;;
        json) echo "$reading $output $transactions --indent --help -h" ;;
        csv) echo "$reading $output $transactions --kind --currencies --help -h" ;;
        accounts | duplicates) echo "$reading $output --full --help -h" ;;
        tree) echo "$reading $output --original --help -h" ;;
        pretty) echo "$reading $output --help -h" ;;
        check) echo "$reading --help -h" ;;
        repair) echo "$file $output --diff --all --help -h" ;;
        request) echo "$output --version --since --routing --help -h" ;;
    esac
}

# What can stand behind an option of a command; nothing where anything can, "FILE" for a file.
_brackwell_values() {
    case $1 in
        --encoding) echo "auto UTF-8 UTF-16 UTF-16BE UTF-16LE UTF-32BE ASCII windows-1252 ISO-8859-1" ;;
        --output | -o) echo "FILE" ;;
        --kind) echo "bank investments positions securities" ;;
        --sort) echo "date amount" ;;
        --routing) echo "none service msgset" ;;
        --version) echo "102 103 151 160 200 203 211 220" ;;
    esac
}

_brackwell_takes_value() {
    case $1 in
        --encoding | --output | -o | --date-format | --decimal-separator | --grouping-separator) ;;
        --since | --until | --account | --search | --sort | --kind | --routing) ;;
        --version) [[ $2 == request ]] ;;
        *) return 1 ;;
    esac
}

# Offers the files that begin with a text.
_brackwell_files() {
    # Outside of a completion, as in a test, there is nothing to set.
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

_brackwell() {
    local commands="show json csv report accounts duplicates check tree pretty repair request"
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command="" values
    # Bash takes "--sort=da" for three words.
    if [[ $current == "=" ]]; then
        current=""
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}
    COMPREPLY=()
    if [[ -n $command ]] && _brackwell_takes_value "$previous" "$command"; then
        values=$(_brackwell_values "$previous")
        [[ $values != FILE ]] || { _brackwell_files "$current" && return; }
        mapfile -t COMPREPLY < <(compgen -W "$values" -- "$current")
    elif [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_brackwell_options "$command")" -- "$current")
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
    elif [[ $command == request ]]; then
        mapfile -t COMPREPLY < <(compgen -W "accounts profile" -- "$current")
    else
        _brackwell_files "$current"
    fi
}

complete -F _brackwell brackwell
