#compdef @NAME@
# Completion of @NAME@ in zsh. The program itself knows what may follow; this asks it.
_varo_@NAME@() {
	local tool=${(Q)words[1]} answer line kind last width found=1
	local left="${(j: :)words[1,CURRENT-1]} $QIPREFIX$IPREFIX$PREFIX"
	local right="$SUFFIX$ISUFFIX$QISUFFIX ${(j: :)words[CURRENT+1,-1]}"
	local -a lines fields texts descriptions shown options expl
	local -i at
	tool=${tool/#\~\//$HOME/}
	[[ $tool == */* && -f $tool && -x $tool ]] || tool=${commands[@NAME@]-}
	[[ -n $tool ]] || return 1
	{ answer=$($tool varooption=complete zsh @NAME@ $left $right < /dev/null) } 2> /dev/null ||
		return 1
	lines=("${(@f)answer}")
	[[ $lines[-1] == end ]] || return 1
	for line in $lines; do
		fields=("${(@ps:\t:)line}")
		kind=$fields[1]$'\t'$fields[4]
		if [[ $kind != $last ]] && (( $#texts )); then
			width=${#${(O@)texts//?/x}[1]}
			shown=("${(@r:width:)texts}") options=()
			for (( at = 1; at <= $#texts; ++at )); do
				shown[at]+=${descriptions[at]:+ -- $descriptions[at]}
			done
			[[ $last == part* ]] && options+=(-S '')
			[[ -n ${(j::)descriptions} ]] && options+=(-l)
			_description -V "${last#*$'\t'}" expl "${last#*$'\t'}"
			compadd -U "$expl[@]" "$options[@]" -d shown -- $texts && found=0
			texts=() descriptions=()
		fi
		last=$kind
		case $fields[1] in
		word | part) texts+=("$fields[2]") descriptions+=("$fields[3]") ;;
		files | directories)
			last=${fields[2]#$QIPREFIX}
			compset -p $#last
			if [[ $fields[1] == files ]]; then
				_files && found=0
			else
				_path_files -/ && found=0
			fi
			;;
		esac
	done
	# What was typed stays, even where the offers have less in common: -o, --one and --other.
	(( $#compstate[unambiguous] < $#PREFIX && compstate[nmatches] > 1 )) && compstate[insert]=
	return found
}
if [[ $funcstack[1] == _@NAME@ ]]; then
	_varo_@NAME@
else
	compdef _varo_@NAME@ @NAME@
fi
