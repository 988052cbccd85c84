# Completion of kelpa's commands for fish, with the board that the words before name.

# Asks kelpa about that board.
function __kelpa_ask
    set -l words (commandline -opc)
    set -l board
    for i in (seq 2 (count $words))
        if string match --quiet -- '--settings=*' $words[$i]
            set board --settings (string replace -- '--settings=' '' $words[$i])
        else if test "$words[$i]" = --settings; and set -q words[(math $i + 1)]
            set board --settings $words[(math $i + 1)]
        end
    end
    # A path that begins with ~ is as it was typed.
    set -q board[2]; and set board[2] (string replace --regex '^~/' "$HOME/" -- $board[2])
    kelpa $board $argv 2>/dev/null
end

function __kelpa_goals
    __kelpa_ask goals | string replace --regex '^\S+ +\S+ +\d+  ' ''
end

function __kelpa_todos
    __kelpa_ask todos | string replace --regex '^(\S+)  ' '$1\t'
end

function __kelpa_windows
    __kelpa_ask windows | string trim --left | string replace --regex '^(\S+)  ' '$1\t'
end

set -l commands goals todos windows add start done reopen edit move delete add-goal edit-goal \
    prioritize move-goal delete-goal assign pin show raise work back undo redo
set -l none "not __fish_seen_subcommand_from $commands"
set -l some "__fish_seen_subcommand_from"

complete -c kelpa -f
complete -c kelpa -l settings -r -F -d 'Use the board in this file'
complete -c kelpa -l help -d 'Say how it is used'
complete -c kelpa -n $none -l show -d 'Bring Kelpa forward'
complete -c kelpa -n $none -l new-todo -d 'Open the field for a todo'
complete -c kelpa -n $none -l version -d 'Say which version this is'
complete -c kelpa -n $none -a goals -d 'List the goals'
complete -c kelpa -n $none -a todos -d 'List the open todos'
complete -c kelpa -n $none -a windows -d 'List the windows of other programs'
complete -c kelpa -n $none -a add -d 'Add a todo'
complete -c kelpa -n $none -a start -d 'Mark a todo as in progress'
complete -c kelpa -n $none -a done -d 'Mark a todo as completed'
complete -c kelpa -n $none -a reopen -d 'Mark a todo as not begun'
complete -c kelpa -n $none -a edit -d 'Change the title of a todo'
complete -c kelpa -n $none -a move -d 'Move a todo'
complete -c kelpa -n $none -a delete -d 'Delete a todo'
complete -c kelpa -n $none -a add-goal -d 'Add a goal'
complete -c kelpa -n $none -a edit-goal -d 'Change the title of a goal'
complete -c kelpa -n $none -a prioritize -d 'Give a goal a priority'
complete -c kelpa -n $none -a move-goal -d 'Move a goal'
complete -c kelpa -n $none -a delete-goal -d 'Delete a goal with its todos'
complete -c kelpa -n $none -a assign -d 'Put a window into a goal'
complete -c kelpa -n $none -a pin -d 'Pin a goal to a virtual desktop'
complete -c kelpa -n $none -a show -d 'Bring Kelpa forward with a goal selected'
complete -c kelpa -n $none -a raise -d 'Bring the windows of a goal forward'
complete -c kelpa -n $none -a work -d 'Bring the windows of a goal forward, minimise others'
complete -c kelpa -n $none -a back -d 'Restore the windows that work has changed'
complete -c kelpa -n $none -a undo -d 'Take the last step back'
complete -c kelpa -n $none -a redo -d 'Repeat the step that was taken back'

complete -c kelpa -n "$some $commands" -l json -d 'Print JSON'
complete -c kelpa -n "$some todos windows add move assign" -l goal -x -a '(__kelpa_goals)'
complete -c kelpa -n "$some todos windows move assign" -l unsorted -d 'Of no goal'
complete -c kelpa -n "$some todos" -l all -d 'Completed ones too'
complete -c kelpa -n "$some move" -l before -x -a '(__kelpa_todos)'
complete -c kelpa -n "$some move" -l behind -x -a '(__kelpa_todos)'
complete -c kelpa -n "$some move-goal" -l before -x -a '(__kelpa_goals)'
complete -c kelpa -n "$some move-goal" -l behind -x -a '(__kelpa_goals)'
complete -c kelpa -n "$some start done reopen edit move delete" -a '(__kelpa_todos)'
complete -c kelpa -n "$some edit-goal prioritize move-goal delete-goal pin show raise work" \
    -a '(__kelpa_goals)'
complete -c kelpa -n "$some prioritize" -a 'p0 p1 p2 p3'
complete -c kelpa -n "$some pin" -a 'none 1 2 3 4'
complete -c kelpa -n "$some assign" -a '(__kelpa_windows)'
