# bash completion for sonvika-cli                           -*- shell-script -*-

# COMPREPLY: those of the given words that begin with the word to complete, ready for the shell to read.
_sonvika_cli_words() {
    local typed=$1 current word quoted
    shift
    current=${typed//\\/}
    current=${current#[\"\']}
    for word in "$@"; do
        [[ $word == "$current"* ]] || continue
        quoted=$word
        [[ $typed == [\"\']* ]] || printf -v quoted '%q' "$word"
        COMPREPLY+=("$quoted")
    done
}

# COMPREPLY: folders, and the files with one of the extensions ("mp3|m4a"); any file without extensions.
_sonvika_cli_files() {
    local current=$1 extensions=$2 name
    type compopt &>/dev/null && compopt -o filenames 2>/dev/null
    while IFS= read -r name; do
        if [[ -z $extensions || -d ${name/#~\//$HOME/} || ${name,,} =~ \.($extensions)$ ]]; then
            COMPREPLY+=("$name")
        fi
    done < <(compgen -f -- "$current")
}

_sonvika_cli_tag() {
    local keys=(TITLE ARTIST ALBUM ALBUMARTIST YEAR GENRE COMMENT TRACKNUMBER DISCNUMBER COMPILATION
        TRACKNUM TRACKTOTAL DISCNUM DISCTOTAL)
    _sonvika_cli_words "${1^^}" "${keys[@]/%/=}"
    type compopt &>/dev/null && compopt -o nospace 2>/dev/null
    COMPREPLY=("${COMPREPLY[@]//\\=/=}")
}

# The value of an option; fails for a switch.
_sonvika_cli_value() {
    local option=$1 current=$2
    case $option in
        --tag) _sonvika_cli_tag "$current" ;;
        --token) _sonvika_cli_words "$current" Track Title Album Year Artist 'Album Artist' Disc Genre ;;
        --output | --image) _sonvika_cli_files "$current" 'jpe?g|png|tiff|gif|bmp' ;;
        --files-from) _sonvika_cli_files "$current" '' ;;
        --chapter) ;;
        *) return 1 ;;
    esac
}

_sonvika_cli_options() {
    case $1 in
        show) echo --json --files-from ;;
        set) echo --tag --files-from ;;
        number | strip-unsupported | strip-all | 'art remove') echo --files-from ;;
        'art get') echo --output --convert ;;
        'art set') echo --image --files-from ;;
        'chapters get') echo --json ;;
        'chapters set') echo --chapter ;;
        rename) echo --token --dry-run --files-from ;;
        type) echo --content --files-from ;;
        recover) echo --json --restore --forget ;;
    esac
}

# The words of the group of commands that begins with the given ones; nothing when they are a whole command.
_sonvika_cli_commands() {
    case $1 in
        '') echo show set number strip-unsupported strip-all art chapters rename type recover help ;;
        help) echo show set number strip-unsupported strip-all art chapters rename type recover ;;
        art | 'help art') echo get set remove ;;
        chapters | 'help chapters') echo get set ;;
    esac
}

# Sets the variables of the caller: the command, how many words it has, and whether "--" stands before the word.
_sonvika_cli_read_line() {
    local i
    command='' count=1 ended=
    while ((count < COMP_CWORD)) && [[ -n $(_sonvika_cli_commands "$command") ]]; do
        command+=${command:+ }${COMP_WORDS[count++]}
    done
    for ((i = count; i < COMP_CWORD; ++i)); do
        [[ ${COMP_WORDS[i]} == -- ]] && ended=1
    done
}

_sonvika_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command count ended
    COMPREPLY=()
    _sonvika_cli_read_line
    local commands options
    read -ra commands < <(_sonvika_cli_commands "$command")
    read -ra options < <(_sonvika_cli_options "$command")
    # The shell may take "=" for a word of its own: --tag = TI, and TITLE = x, whose text nobody can guess.
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
        [[ $previous == --* ]] || return 0
    fi

    if ((${#commands[@]})); then
        if [[ $current == -* && $command != help* ]]; then
            commands=(-h --help)
            [[ -n $command ]] || commands+=(--version)
        fi
        _sonvika_cli_words "$current" "${commands[@]}"
    elif [[ $command == help* ]]; then
        return 0
    elif [[ -z $ended ]] && ((COMP_CWORD > count)) && _sonvika_cli_value "$previous" "$current"; then
        return 0
    elif [[ -z $ended && $current == -* ]]; then
        _sonvika_cli_words "$current" "${options[@]}" -h --help
    elif [[ $command != recover ]]; then
        _sonvika_cli_files "$current" 'mp3|m4a'
    fi
}

complete -F _sonvika_cli sonvika-cli
