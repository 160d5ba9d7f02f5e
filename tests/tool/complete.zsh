#!/usr/bin/zsh -f
# Prints what zsh offers at the end of a command line, a word in each line:
#
#   complete.zsh FOLDER LINE     FOLDER holds the completion
#
# An interactive zsh on a terminal of its own gets the line and a tab. What its completion adds comes by a
# function in the place of the builtin.
zmodload zsh/zpty
offers=$(mktemp)
trap 'rm -f $offers' EXIT
zpty terminal zsh -f -i
zpty -w terminal "fpath=(${(q)1} \$fpath); offers=$offers"
zpty -w terminal 'compadd() {
    local -a hits
    (( ${@[(I)-[OAD]]} )) || { builtin compadd -A hits "$@"; print -rl -- $hits >>$offers }
    builtin compadd "$@"
}'
zpty -w terminal 'autoload -Uz compinit; compinit -u -D; print re""ady'
zpty -r terminal output '*ready*'
zpty -n -w terminal "$2"$'\t\C-a\C-kprint do""ne\n'
zpty -r terminal output '*done*'
grep . $offers | sort -u
