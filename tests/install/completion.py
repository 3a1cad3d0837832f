"""Types at a real shell and looks at what a command then is given: completion.py SHELL SCRIPT.

The shell runs in a terminal of its own with the completion loaded; "streakfall" is a stand-in there
that writes down its arguments. Ends with 77 where there is no such shell.
"""

import json
import os
import pathlib
import pty
import select
import shutil
import signal
import sys
import tempfile
import time

SKIPPED = 77
PATIENCE = 60  # seconds, on a busy machine

# What is typed, with "\t" for the key, and the arguments that must come of it. bash closes a quote
# where a name is complete, before its value; the others do not: `|` stands for what is typed then.
CASES = [
    ("ren\t --inp\t pic\t --exist\t sk\t", ["render", "--input", "pic ture.png", "--existing", "skip"]),
    ("render -i pic\t --missing ho\t", ["render", "-i", "pic ture.png", "--missing", "hold"]),
    ("render --format rg\t --compression pxr\t", ["render", "--format", "rgba", "--compression", "pxr24"]),
    ("render --existing=sk\t", ["render", "--existing=skip"]),
    ("render --look imp\t --look ./lo\t", ["render", "--look", "impact-fan", "--look", "./look.json"]),
    ("render --set Density\\ o\t50", ["render", "--set", "Density of Lines=50"]),
    ('render --set "Density o\t50|', ["render", "--set", "Density of Lines=50"]),
    ("render --set Repeat=of\t", ["render", "--set", "Repeat=off"]),
    ('render --set "Clear Background=of\t', ["render", "--set", "Clear Background=off"]),
    ("render --key Attr\t1=0,@5=2", ["render", "--key", "Attraction@1=0,@5=2"]),
    ("sheet --vary Random\\ Se\t1..5", ["sheet", "--vary", "Random Seed=1..5"]),
    ("defaults sa\t --ye\t --lang j\t", ["defaults", "save", "--yes", "--lang", "ja"]),
    ("explain Group\\ O\t", ["explain", "Group Offset Random"]),
    ("looks foc\t", ["looks", "focus-lines"]),
    ("manual zs\t", ["manual", "zsh"]),
]

# What is typed, and words that must be among those that the shell then shows.
LISTS = [
    ("", ["render", "validate", "manual"]),
    ("render --look ", ["impact-fan", "rain"]),
    ("render --set Wave\\ ", ["Amount", "Length", "Phase"]),
]

STARTS = {
    "bash": (["bash", "--norc", "--noprofile", "-i"], "source {script}; PS1='{ready}'"),
    "zsh": (
        ["zsh", "-f", "-i"],
        "fpath=({folder} $fpath); autoload -U compinit; compinit -u -D; PS1='{ready}'",
    ),
    "fish": (
        ["fish", "--no-config", "-i"],
        "source {script}; function fish_prompt; echo -n '{ready}'; end",
    ),
}

STAND_IN = """#!{python}
import json, sys
open({log!r}, "a").write(json.dumps(sys.argv[1:]) + "\\n")
"""


class Shell:
    """A shell in a terminal, in a folder of its own."""

    def __init__(self, name, script):
        self.scratch = tempfile.TemporaryDirectory()
        folder = pathlib.Path(self.scratch.name)
        self.quote = "" if name == "bash" else '"'
        self.list = "\t\t" if name == "bash" else "\t"
        self.log = folder / "arguments"
        program = folder / "bin/streakfall"
        program.parent.mkdir()
        program.write_text(STAND_IN.format(python=sys.executable, log=str(self.log)))
        program.chmod(0o755)
        for file in ("pic ture.png", "look.json"):
            (folder / file).touch()
        line, setup = STARTS[name]
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            own = {"HOME": str(folder), "TERM": "xterm", "LC_ALL": "C.UTF-8",
                   "PATH": f"{program.parent}:{os.environ['PATH']}"}
            os.execvpe(line[0], line, os.environ | own)
        ready = "READY''NOW> "  # as it is typed it does not look as it is shown
        self.type(setup.format(script=script, folder=script.parent, ready=ready) + "\r")
        self.screen = ""
        self.read_until(lambda: "READYNOW> " in self.screen)

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read_until(self, done):
        end = time.monotonic() + PATIENCE
        while not done():
            if time.monotonic() > end:
                raise TimeoutError(self.screen[-2000:])
            if select.select([self.terminal], [], [], 0.05)[0]:
                self.screen += os.read(self.terminal, 65536).decode(errors="replace")

    def arguments(self, typed):
        """What the command gets when this is typed behind its name."""
        self.log.write_text("")
        self.type(f"streakfall {typed.replace('|', self.quote)}\r")
        self.read_until(lambda: self.log.read_text().endswith("\n"))
        return json.loads(self.log.read_text())

    def offered(self, typed, words):
        """Waits until all words are shown as what the typed may become."""
        self.screen = ""
        self.type(f"streakfall {typed}{self.list}")
        self.read_until(lambda: all(word in self.screen for word in words))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.kill(self.process, signal.SIGKILL)
        os.close(self.terminal)
        os.waitpid(self.process, 0)
        self.scratch.cleanup()


def main():
    name, script = sys.argv[1], pathlib.Path(sys.argv[2]).resolve()
    if shutil.which(name) is None:
        print(f"there is no {name} here")
        return SKIPPED
    failures = 0
    with Shell(name, script) as shell:
        for typed, wanted in CASES:
            got = shell.arguments(typed)
            if got != wanted:
                failures += 1
                print(f"{typed!r}: wanted {wanted}, got {got}")
    for typed, words in LISTS:
        with Shell(name, script) as shell:
            shell.offered(typed, words)
    print(f"{name}: {len(CASES)} lines typed, {failures} wrong")
    return 1 if failures else 0


sys.exit(main())
