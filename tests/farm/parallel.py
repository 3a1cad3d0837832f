"""The lines of docs/farm.md for GNU parallel, as they stand there but for the nodes' names: parallel.py
PROGRAM PAGE. Ends with 77 where there is no GNU parallel."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77


def main():
    program, page = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    if shutil.which("parallel") is None:
        print("there is no GNU parallel here")
        return SKIPPED
    lines = re.search(r"```\n(seq .*?)```", page.read_text(), re.DOTALL)[1]
    assert "node1,node2" in lines
    lines = lines.replace("node1,node2", ":")  # this machine, without ssh
    with tempfile.TemporaryDirectory() as folder:
        path = f"{program.parent}:{os.environ['PATH']}"
        environment = os.environ | {"PATH": path, "HOME": folder}

        def shell(line):
            return subprocess.run(["bash", "-ec", line], cwd=folder, env=environment,
                                  capture_output=True, text=True)

        made = shell("streakfall render --size 64x36 -f 1-32 -o in.####.png -q")
        assert made.returncode == 0, made.stderr
        done = shell(lines)
        assert done.returncode == 0, done.stdout + done.stderr
        assert "32 frames: 32 written" in done.stdout and "chunks: 16 of 16" in done.stdout, done
    return 0


sys.exit(main())
