# Completion of @NAME@ in bash. The program itself knows what may follow; this asks it.
_varo_@NAME@() {
	local tool=$1 answer line kind text typed quote file rest blank=
	local -a lines=()
	local -A isDirectory=()
	COMPREPLY=()
	[[ $tool == "~/"* ]] && tool=$HOME/${tool:2}
	[[ $tool == */* && -f $tool && -x $tool ]] || tool=$(type -P @NAME@) || return 0
	{ answer=$("$tool" varooption=complete bash @NAME@ "${COMP_LINE:0:COMP_POINT}" \
		"${COMP_LINE:COMP_POINT}" "$COMP_WORDBREAKS" < /dev/null); } 2> /dev/null || return 0
	mapfile -t lines <<< "$answer"
	[[ ${lines[-1]} == end ]] || return 0
	for line in "${lines[@]}"; do
		kind=${line%%$'\t'*} line=${line#*$'\t'}
		text=${line%%$'\t'*} line=${line#*$'\t'}
		case $kind in
		word | part) COMPREPLY+=("$text") ;;
		nospace) compopt -o nospace ;;
		files | directories)
			typed=${line%%$'\t'*} line=${line#*$'\t'}
			quote=${line%%$'\t'*} line=${line#*$'\t'}
			line=${line%%$'\t'*}
			while IFS= read -r file; do
				isDirectory["x$file"]=1
			done < <(compgen -d -- "$line")
			compopt -o filenames -o noquote
			if ((${#isDirectory[@]} > 0)); then
				compopt -o nospace
				[[ $quote ]] || blank=" "
			fi
			while IFS= read -r file; do
				[[ $file == "$typed"* ]] || continue
				rest=${file#"$typed"}
				case $quote in
				\') rest=${rest//\'/"'\\''"} ;;
				\") rest=${rest//\\/\\\\} rest=${rest//\"/\\\"} rest=${rest//\$/\\\$} rest=${rest//\`/\\\`} ;;
				\$) rest=${rest//\\/\\\\} rest=${rest//\'/\\\'} ;;
				*) [[ -z $rest ]] || printf -v rest %q "$rest" ;;
				esac
				if [[ ${isDirectory["x$file"]-} ]]; then
					COMPREPLY+=("$text$rest/")
				elif [[ $kind == files ]]; then
					COMPREPLY+=("$text$rest$blank")
				fi
			done < <(compgen -f -- "$line")
			;;
		esac
	done
}
complete -F _varo_@NAME@ @NAME@
