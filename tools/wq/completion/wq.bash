# bash completion for wq                                   -*- shell-script -*-
# Commands, their verbs and options, option values where they are a closed
# set, and file names where a command reads or writes files.

_wq_commands="base64 date decrypt encrypt escape help inspect log money round unescape update-info"
# Options that take the next word as their value.
_wq_valued="--line-length --units --locale --iterations --password-file --max-size --app --places
--symbol --positive --negative --thousands --decimal"

_wq_options()
{
    case $1 in
        base64) echo "--line-length" ;;
        date) echo "--units --locale" ;;
        decrypt) echo "--max-size --password-file --password-stdin" ;;
        encrypt) echo "--classic --iterations --insecure --password-file --password-stdin" ;;
        inspect) echo "--max-size" ;;
        log) echo "--app" ;;
        money) echo "--atm --places --locale --symbol --positive --negative --thousands --decimal" ;;
        round) echo "--split" ;;
        update-info) echo "--query" ;;
    esac
}

_wq_verbs()
{
    case $1 in
        base64) echo "encode decode" ;;
        date) echo "make info from-day add since format" ;;
        escape) echo "xml csv url" ;;
        unescape) echo "xml csv" ;;
        log) echo "path write tail trim-before clean" ;;
        money) echo "format parse type" ;;
        help) echo "$_wq_commands" ;;
    esac
}

_wq_files()
{
    compopt -o filenames 2>/dev/null
    local IFS=$'\n'
    COMPREPLY=($(compgen -f -- "$1"))
}

_wq()
{
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        COMPREPLY=($(compgen -W "$_wq_commands --help --version" -- "$cur"))
        return
    fi
    local command=${COMP_WORDS[1]}

    # The operands so far, skipping options and their values; after "--"
    # everything is an operand.
    local i word ended= skip= operands=0
    for ((i = 2; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ -n $skip ]]; then
            skip=
        elif [[ -z $ended && $word == -- ]]; then
            ended=1
        elif [[ -z $ended && $word == -* && $word != - ]]; then
            [[ " ${_wq_valued//$'\n'/ } " == *" $word "* ]] && skip=1
        else
            ((operands++))
        fi
    done

    if [[ -n $skip ]]; then
        case $prev in
            --password-file) _wq_files "$cur" ;;
            --units) COMPREPLY=($(compgen -W "ymd y m d ym yd md" -- "$cur")) ;;
            --locale) COMPREPLY=($(compgen -W "$(locale -a 2>/dev/null)" -- "$cur")) ;;
        esac
        return
    fi
    if [[ -z $ended && $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$(_wq_options "$command") --help --" -- "$cur"))
        return
    fi
    case $command in
        encrypt | decrypt | inspect) _wq_files "$cur" ;;
        base64)
            if ((operands == 0)); then
                COMPREPLY=($(compgen -W "$(_wq_verbs base64)" -- "$cur"))
            else
                _wq_files "$cur"
            fi
            ;;
        *)
            ((operands == 0)) && COMPREPLY=($(compgen -W "$(_wq_verbs "$command")" -- "$cur"))
            ;;
    esac
}

complete -F _wq wq
