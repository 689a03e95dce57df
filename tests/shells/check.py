#!/usr/bin/python3
"""Types command lines into real shells and looks what completion makes of them.

check.py TOOL: the program of tool.cpp. Its rows are (what is typed, what the line is then); a tab
completes, "<" is a step to the left. Each shell gets a directory with files to complete and three
more programs: one at home, one that is gone, and one that dies in the middle of its answer.
"""
import os
import pty
import select
import shutil
import subprocess
import sys
import tempfile
import time

# What a shell must do wherever its own ways of quoting do not matter.
COMMON = [
    ("tool --sc\t", "tool --scan "),
    ("tool -sc\t", "tool --scan "),
    ("tool \u2013sc\t", "tool --scan "),
    ("tool --scan --re\t", "tool --scan --re"),
    ("tool --scan --od\t", "tool --scan --odd="),
    ("tool --scan --no-ver\t", "tool --scan --no-verbose "),
    ("tool --rep --form=j\t", "tool --rep --form=json "),
    ("tool --report --format j\t", "tool --report --format json "),
    ("tool --scan --zz-39\t", "tool --scan --zz-39"),
    ("tool --scan --zz-399\t", "tool --scan --zz-399 "),
    # Values with word breaks and quotes
    ("tool --scan --odd=x\t", "tool --scan --odd=x::Y "),
    ("tool --scan --odd=x:\t", "tool --scan --odd=x::Y "),
    ("tool --scan --odd=x::\t", "tool --scan --odd=x::Y "),
    ("tool --scan --odd=a:\t", "tool --scan --odd=a:"),
    ("tool --scan --odd=a:b\t", "tool --scan --odd=a:b "),
    ("tool --scan --odd=a:c\t", "tool --scan --odd=a:c=d "),
    ("tool --scan --odd=a:c=\t", "tool --scan --odd=a:c=d "),
    ("tool --scan --odd x:\t", "tool --scan --odd x::Y "),
    ("tool --scan --odd=i\t", r"tool --scan --odd=it\'s "),
    ("tool --scan --odd=q\t", r"tool --scan --odd=q\"uote "),
    ("tool --scan --odd=a\\ \t", r"tool --scan --odd=a\ b\$c "),
    ("tool --scan --odd 'it\t", r"tool --scan --odd 'it'\''s' "),
    ("tool --scan --odd \"it\t", "tool --scan --odd \"it's\" "),
    ("tool --scan --odd 'q\t", "tool --scan --odd 'q\"uote' "),
    ("tool --scan --odd \"q\t", r'tool --scan --odd "q\"uote" '),
    ("tool --scan --odd 'a \t", "tool --scan --odd 'a b$c' "),
    ("tool --scan --odd \"a \t", r'tool --scan --odd "a b\$c" '),
    ("tool --scan \"--odd=x\t", 'tool --scan "--odd=x::Y" '),
    ("tool --scan '--odd=a:c\t", "tool --scan '--odd=a:c=d' "),
    # Files
    ("tool --scan --save=tw\t", r"tool --scan --save=two\ words.txt "),
    ("tool --scan --save tw\t", r"tool --scan --save two\ words.txt "),
    ("tool --scan --save 'tw\t", "tool --scan --save 'two words.txt' "),
    ("tool --scan --save=\u00fc\t", "tool --scan --save=\u00fcber.txt "),
    ("tool --scan --save=~/x\t", "tool --scan --save=~/xyz.txt "),
    ("tool --scan --save ~/x\t", "tool --scan --save ~/xyz.txt "),
    ("tool --scan --save=my\\ d\t", r"tool --scan --save=my\ dir/"),
    ("tool --scan --save=my\\ dir/i\t", r"tool --scan --save=my\ dir/it\'s.txt "),
    ("tool --scan --save=co\t", "tool --scan --save=col:on=x.txt "),
    ("tool --scan --save=col:o\t", "tool --scan --save=col:on=x.txt "),
    ("tool --scan --into=m\t", r"tool --scan --into=my\ dir/"),
    ("tool --scan --into=tw\t", "tool --scan --into=tw"),
    ("tool --scan tw\t", r"tool --scan two\ words.txt "),
    ("tool --report tw\t", "tool --report tw"),
    ("tool --scan --depth=1 -- tw\t", r"tool --scan --depth=1 -- two\ words.txt "),
    ("tool --option-file=tw\t", r"tool --option-file=two\ words.txt "),
    ("tool --scan > tw\t", r"tool --scan > two\ words.txt "),
    # The cursor in the middle, and what stands to its right
    ("tool --dep --report<<<<<<<<<\t", "tool --dep --report"),
    ("tool --for --report<<<<<<<<<\t", "tool --format= --report"),
    # Around the program
    ("true | tool --sc\t", "true | tool --scan "),
    ("true; tool --sc\t", "true; tool --scan "),
    ("A=b tool --sc\t", "A=b tool --scan "),
    ("tool > out --sc\t", "tool > out --scan "),
    ("./bin/tool --sc\t", "./bin/tool --scan "),
    ("~/bin/tool --h\t", "~/bin/tool --home-made "),
    # What must not be run, and what must not be heard of
    ("tool --scan $(touch owned) --dep\t", "tool --scan $(touch owned) --depth="),
    ("tool --scan --save=$(touch owned)/x\t", "tool --scan --save=$(touch owned)/x"),
    ("tool --scan --host=al\t", "tool --scan --host=alpha "),
    ("gone --sc\t", "gone --sc"),
    ("dying --sc\t", "dying --sc"),
    ("short --sc\t", "short --sc"),
    ("tool --scan --crash=x\t", "tool --scan --crash=x"),
]

BASH = [
    ("tool --scan -o\t", "tool --scan -o="),
    # Here bash looks for another command, and asks nobody.
    ("tool 2>&1 --sc\t", "tool 2>&1 --sc"),
    ("tool --scan `touch owned` --dep\t", "tool --scan `touch owned` --dep"),
    ("tool --scan --odd='it\t", r"tool --scan --odd='it'\''s' "),
    ("tool --scan --odd=\"a b\t", r'tool --scan --odd="a b\$c" '),
    ("tool --scan --odd='it'\\''s'\t", r"tool --scan --odd='it'\''s' "),
    ("tool --scan --save=\"my dir/i\t", 'tool --scan --save="my dir/it\'s.txt" '),
    ("tool --scan --save='my dir'/i\t", "tool --scan --save='my dir'/it\\'s.txt "),
    ("tool --scan --save=\"my\t", 'tool --scan --save="my dir/'),
]
BASH_COMPLETION = [("sudo tool --sc\t", "sudo tool --scan "), ("sudo tool --scan --odd=a:c\t",
                                                             "sudo tool --scan --odd=a:c=d ")]
ZSH = [
    ("tool --scan -o\t", "tool --scan -o"),
    ("tool 2>&1 --sc\t", "tool 2>&1 --scan "),
    ("tool --scan `touch owned` --dep\t", "tool --scan `touch owned` --depth="),
    ("tool --scan --odd='it\t", r"tool --scan --odd=it\'s "),
    ("sudo tool --sc\t", "sudo tool --scan "),
    ("tool --scan --save=\"my dir/i\t", r"tool --scan --save=my\ dir/it\'s.txt "),
]
MENU = [("tool --scan --odd=\t", "tool --scan --odd=a:b "),
        ("tool --scan --odd=\t\t\t\t", r"tool --scan --odd=it\'s ")]
NOISE = ["not found", "rror", "fault", "bort", "terminated", "unbound", "parameter not set"]

DUMP = "\x18\x10"  # the keys that write the line down and empty it


class Session:
    """One interactive shell on a pseudo-terminal."""

    def __init__(self, command, setup, directory):
        self.log = os.path.join(directory, "lines")
        self.output = ""
        open(self.log, "w").close()
        pid, self.terminal = pty.fork()
        if pid == 0:
            os.chdir(directory)
            environment = {"HOME": os.path.join(directory, "home"), "TERM": "dumb",
                           "PATH": os.path.join(directory, "path") + ":" + os.environ["PATH"],
                           "LC_ALL": "C.UTF-8", "LOG": self.log, "HISTFILE": "", "PS1": "> "}
            os.execvpe(command[0], command, environment)
        self.pid = pid
        path = os.path.join(directory, "setup")
        with open(path, "w") as file:
            file.write(setup)
        self.send(". ./setup\n")
        self.wait_for_line(0)

    def send(self, text):
        os.write(self.terminal, text.encode())

    def drain(self, seconds):
        while select.select([self.terminal], [], [], seconds)[0]:
            try:
                self.output += os.read(self.terminal, 65536).decode(errors="replace")
            except OSError:
                break
            seconds = 0

    def wait_for_line(self, count):
        limit = time.time() + 20
        while time.time() < limit:
            self.drain(0.002)
            with open(self.log) as file:
                lines = file.read().split("\n")
            if len(lines) > count + 1:
                return lines[count]
        return "(no answer) " + self.output[-300:]

    def type(self, text, count):
        self.output = ""
        self.send(text.replace("<", "\x02") if "<<" in text else text)
        self.send(DUMP)
        return self.wait_for_line(count)

    def close(self):
        self.send("\x15exit\n")
        self.drain(0.2)
        os.close(self.terminal)
        os.waitpid(self.pid, 0)


class Fault(Exception):
    pass


def check_rows(name, command, setup, rows, directory):
    session = Session(command, setup, directory)
    faults = 0
    start = time.time()
    for count, (typed, expected) in enumerate(rows, 1):
        line = session.type(typed, count)
        heard = [noise for noise in NOISE if noise in session.output]
        if os.path.exists(os.path.join(directory, "owned")):
            heard.append("owned")
            os.remove(os.path.join(directory, "owned"))
        if line != expected or heard:
            faults += 1
            print(f"check-shells: {name}: {typed!r} became\n    {line}\nnot\n    {expected}",
                  file=sys.stderr)
            if heard:
                print(f"    with {session.output!r}", file=sys.stderr)
    session.close()
    print(f"{name}: {len(rows)} lines, {time.time() - start:.1f} s")
    return faults


def check_zsh_list(directory, setup):
    session = Session(["zsh", "-f", "-i"], setup + "LISTMAX=1000\n", directory)
    session.type("tool --scan --h\t\t", 1)
    session.type("tool --report --format=\t\t", 2)
    shown = session.output
    session.type("tool --scan --host=\t\t", 3)
    shown += session.output
    session.close()
    faults = 0
    for text in ["alpha -- the first: $(touch owned) 'quoted' \"too\" [x] `touch owned`", "csv"]:
        if text not in shown:
            faults += 1
            print(f"check-shells: zsh does not show {text!r} but {shown!r}", file=sys.stderr)
    return faults


# What fish offers: (line up to the cursor, offers).
FISH = [
    ("tool --sc", ["--scan\tScan things"]),
    ("tool --report --form", ["--format=\tHow to print"]),
    ("tool --scan --re", []),
    ("tool --scan --odd=a:", ["--odd=a:b", "--odd=a:c=d"]),
    ("tool --scan --odd x", ["x::Y"]),
    ("tool --scan --odd=i", ["--odd=it's"]),
    ("tool --scan --odd 'q", ["q\"uote"]),
    ("tool --scan --odd \"a b", ["a b$c"]),
    ("tool --scan --odd=a\\ ", ["--odd=a b$c"]),
    ("tool --scan --host=al",
     ["--host=alpha\tthe first: $(touch owned) 'quoted' \"too\" [x] `touch owned`"]),
    ("tool --scan --save=tw", ["--save=two words.txt"]),
    ("tool --scan --save=~/x", ["--save=~/xyz.txt"]),
    ("tool --scan --save \u00fc", ["\u00fcber.txt"]),
    ("tool --scan --save=my\\ dir/i", ["--save=my dir/it's.txt"]),
    ("tool --scan --into=", ["--into=bin/", "--into=home/", "--into=my dir/", "--into=path/",
                            "--into=stubs/"]),
    ("tool --scan --depth=1 -- tw", ["two words.txt"]),
    ("true | tool --sc", ["--scan\tScan things"]),
    ("true; tool --sc", ["--scan\tScan things"]),
    ("and tool --sc", ["--scan\tScan things"]),
    ("A=b tool --sc", ["--scan\tScan things"]),
    ("sudo tool --sc", ["--scan\tScan things"]),
    ("tool > out --sc", ["--scan\tScan things"]),
    ("./bin/tool --sc", ["--scan\tScan things"]),
    ("~/bin/tool --h", ["--home-made"]),
    ("tool --scan (touch owned) $(touch owned) --dep", ["--depth=\tLevels"]),
    ("gone --sc", []),
    ("dying --sc", []),
    ("short --sc", []),
    ("tool --scan --crash=x", []),
]


def check_fish(directory, stubs):
    script = "".join(f"source {stub}\n" for stub in stubs)
    script += "".join("complete -C " + quoted(line) + "; echo end\n" for line, _ in FISH)
    start = time.time()
    ran = subprocess.run(["fish", "-c", script], cwd=directory, text=True,
                         capture_output=True, check=False,
                         env={"HOME": os.path.join(directory, "home"), "LC_ALL": "C.UTF-8",
                              "PATH": os.path.join(directory, "path") + ":" + os.environ["PATH"]})
    faults = 0
    answers = ran.stdout.split("end\n")
    for (line, expected), answer in zip(FISH, answers):
        if answer.splitlines() != expected:
            faults += 1
            print(f"check-shells: fish: {line!r} is offered\n    {answer.splitlines()}\nnot\n"
                  f"    {expected}", file=sys.stderr)
    if ran.stderr:
        faults += 1
        print(f"check-shells: fish says {ran.stderr!r}", file=sys.stderr)
    print(f"fish: {len(FISH)} lines, {time.time() - start:.1f} s")
    return faults


def quoted(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def write(path, text="", mode=0o644):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as file:
        file.write(text)
    os.chmod(path, mode)


def build(directory, tool):
    """Files to complete, programs, and the stubs that the tool writes for them."""
    for name in ["two words.txt", "\u00fcber.txt", "my dir/it's.txt", "col:on=x.txt",
                 "home/xyz.txt"]:
        write(os.path.join(directory, name))
    for place in ["path/tool", "bin/tool"]:
        os.makedirs(os.path.dirname(os.path.join(directory, place)), exist_ok=True)
        shutil.copy(tool, os.path.join(directory, place))
    write(os.path.join(directory, "home/bin/tool"),
          "#!/bin/sh\nprintf 'word\\t--home-made\\t\\toptions\\nend\\n'\n", 0o755)
    write(os.path.join(directory, "path/dying"),
          "#!/bin/sh\nprintf 'word\\t--scan\\t\\toptions\\nend\\n'\nkill -SEGV $$\n", 0o755)
    write(os.path.join(directory, "path/short"),
          "#!/bin/sh\nprintf 'word\\t--scan\\t\\toptions\\n'\n", 0o755)
    write(os.path.join(directory, "path/sudo"), "#!/bin/sh\n\"$@\"\n", 0o755)
    stubs = {}
    for shell in ["bash", "zsh", "fish"]:
        stubs[shell] = []
        for name in ["tool", "gone", "dying", "short"]:
            stub = os.path.join(directory, "stubs", shell, name)
            text = subprocess.run([tool, "varooption=script", shell, name], text=True,
                                  capture_output=True, check=True).stdout
            write(stub, text)
            stubs[shell].append(stub)
    return stubs


def main():
    tool = os.path.realpath(sys.argv[1])
    faults = 0
    with tempfile.TemporaryDirectory() as directory:
        stubs = build(directory, tool)
        load = {shell: "".join(f". {stub}\n" for stub in stubs[shell]) for shell in stubs}
        done = "printf 'ready\\n' >> $LOG\n"
        bash = ("bind 'set bell-style none'\nbind 'set show-all-if-ambiguous off'\n"
                "dump() { printf '%s\\n' \"$READLINE_LINE\" >> \"$LOG\"; READLINE_LINE=; "
                "READLINE_POINT=0; }\nbind -x '\"\\C-x\\C-p\": dump'\nset -u\n")
        bare = ["bash", "--norc", "--noprofile", "-i"]
        rows = COMMON + BASH
        faults += check_rows("bash", bare, bash + load["bash"] + done, rows, directory)
        faults += check_rows("bash with bash-completion", bare,
                             ". /usr/share/bash-completion/bash_completion\n" + bash.replace("set -u\n", "") +
                             load["bash"] + done, rows + BASH_COMPLETION, directory)
        faults += check_rows("bash without = and : in COMP_WORDBREAKS", bare,
                             bash + "COMP_WORDBREAKS=$' \\t\\n\"\\'><;|&('\n" + load["bash"] + done,
                             rows, directory)
        faults += check_rows("bash with menu-complete", bare,
                             bash + "bind 'TAB:menu-complete'\n" + load["bash"] + done, MENU,
                             directory)
        zsh = ("autoload -Uz compinit; compinit -D -u\nunsetopt beep\nbindkey -e\n"
               "dump() { print -r -- \"$BUFFER\" >> $LOG; BUFFER= }\nzle -N dump\n"
               "bindkey '^X^P' dump\nbindkey '^I' complete-word\nsetopt no_auto_menu\n")
        faults += check_rows("zsh", ["zsh", "-f", "-i"], zsh + load["zsh"] + done, COMMON + ZSH,
                             directory)
        faults += check_zsh_list(directory, zsh + load["zsh"] + done)
        faults += check_fish(directory, stubs["fish"])
        if os.path.exists(os.path.join(directory, "owned")):
            faults += 1
            print("check-shells: a part of a line or of a description was run", file=sys.stderr)
    if faults:
        sys.exit(f"check-shells: {faults} faults")


main()
