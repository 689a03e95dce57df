# Completion of @NAME@ in fish. The program itself knows what may follow; this asks it.
function __varo_@NAME@
	set -l tool
	for word in (commandline -opc)
		set word (string replace -r '^~/' "$HOME/" -- $word)
		if test "$word" = @NAME@
			break
		else if string match -q '*/@NAME@' -- $word; and test -f $word -a -x $word
			set tool $word
			break
		end
	end
	set -q tool[1]; or set tool (command -s @NAME@); or return
	set -l left (commandline -cp | string collect)
	set -l line (commandline -p | string collect)
	set -l right (string sub -s (math 1 + (string length -- "$left")) -- "$line" | string collect)
	set -l lines (command $tool varooption=complete fish @NAME@ "$left" "$right" </dev/null 2>/dev/null)
	test $status -eq 0 -a "$lines[-1]" = end; or return
	string replace -rf '^(?:word|part)\t([^\t]*)\t([^\t]*).*' '$1'\t'$2' -- $lines
	for line in (string match -r '^(?:files|directories)\t.*' -- $lines)
		set -l fields (string split \t -- $line)
		set -l typed (string replace -r '^~/' "$HOME/" -- "$fields[3]")
		for file in "$typed"*
			set -l text "$fields[2]$fields[3]"(string sub -s (math 1 + (string length -- "$typed")) -- $file)
			if test -d $file
				echo $text/
			else if test $fields[1] = files
				echo $text
			end
		end
	end
end
complete -c @NAME@ -f -k -a '(__varo_@NAME@)'
