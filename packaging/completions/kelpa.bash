# Completion of kelpa's commands for bash. Goals and todos complete by their titles and identifiers,
# which a Kelpa that runs, or the board's file, names.

_kelpa_goals() {
    kelpa "${board[@]}" goals 2>/dev/null | sed -E 's/^\S+ +\S+ +[0-9]+  //'
}

_kelpa_todos() {
    kelpa "${board[@]}" todos 2>/dev/null | cut -d ' ' -f 1
}

# Offers the lines of standard input that begin with the word, quoted as the shell needs it.
_kelpa_offer() {
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        [[ $line == "$1"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
    done
}

_kelpa() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= each i
    local -a board=()
    local commands='goals todos windows add start done reopen edit move delete add-goal edit-goal
        prioritize move-goal delete-goal assign pin show raise work back undo redo'
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ " ${commands//[$'\n']/ } " == *" $each "* ]]; then
            command=$each
            break
        fi
    done
    for ((i = 1; i + 1 < COMP_CWORD; ++i)); do
        # A path that begins with ~ is as it was typed.
        [[ ${COMP_WORDS[i]} == --settings ]] || continue
        # Readline makes a word of the equals sign.
        [[ ${COMP_WORDS[i+1]} == '=' ]] && ((++i))
        board=(--settings "${COMP_WORDS[i+1]/#\~/$HOME}")
    done
    case $before in
    --settings | --import)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return ;;
    --goal)
        _kelpa_offer "$word" < <(_kelpa_goals)
        return ;;
    --before | --behind)
        if [[ $command == move-goal ]]; then
            _kelpa_offer "$word" < <(_kelpa_goals)
        else
            _kelpa_offer "$word" < <(_kelpa_todos)
        fi
        return ;;
    prioritize | pin)
        _kelpa_offer "$word" < <(_kelpa_goals)
        return ;;
    esac
    if [[ $word == -* ]]; then
        local options='--help --json --settings'
        case $command in
        '') options='--show --new-todo --hidden --service --settings --desktop --about-desktop --list-backups --restore
            --export --goal --import --format --replace --help --version' ;;
        todos) options+=' --goal --unsorted --all' ;;
        windows | assign) options+=' --goal --unsorted' ;;
        add) options+=' --goal' ;;
        move) options+=' --goal --unsorted --before --behind' ;;
        move-goal) options+=' --before --behind' ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
        return
    fi
    case $command in
    '') mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$word") ;;
    start | done | reopen | edit | move | delete) _kelpa_offer "$word" < <(_kelpa_todos) ;;
    edit-goal | move-goal | delete-goal | show | raise | work) _kelpa_offer "$word" < <(_kelpa_goals) ;;
    prioritize) mapfile -t COMPREPLY < <(compgen -W 'p0 p1 p2 p3' -- "$word") ;;
    pin) mapfile -t COMPREPLY < <(compgen -W 'none 1 2 3 4' -- "$word") ;;
    assign) _kelpa_offer "$word" < <(kelpa "${board[@]}" windows 2>/dev/null | awk '{ print $1 }') ;;
    esac
}

complete -F _kelpa kelpa
