"""`streakfall report` over reports that render wrote: report.py PROGRAM."""

import json
import pathlib
import subprocess
import sys
import tempfile


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    scratch = tempfile.TemporaryDirectory()
    folder = pathlib.Path(scratch.name)

    def run(line, code):
        done = subprocess.run([program, *line.split()], cwd=folder, capture_output=True, text=True)
        assert done.returncode == code, (line, done.returncode, done.stdout, done.stderr)
        return done.stdout + done.stderr

    def chunk(part, code=0, more=""):
        run(f"render -i in.#### -o out.####.png -f 1-9 --chunk {part}/3 --report {part}.json -q "
            .replace("in.####", "in.####.png") + more, code)

    run("render --size 32x32 -f 1-9 -o in.####.png -q", 0)
    (folder / "in.0005.png").write_text("no picture")
    chunk(1)
    chunk(2, code=1)
    told = run("report 1.json 2.json", 1)
    for words in ("6 frames: 5 written, 0 skipped, 1 failed, 0 missing", "failed: 5\n",
                  "chunks: 2 of 3\n", "no report of chunk: 3\n", "exit code: 0 (1 run), 1 (1 run)\n"):
        assert words in told, (words, told)

    # A frame that another run wrote is there, and one that a run did not come to is missing.
    run("render --size 32x32 -f 5 -o in.####.png -q", 0)
    run("render -i in.####.png -o out.####.png -f 4-6 --existing skip --report again.json -q", 0)
    chunk(3)
    assert run("report 1.json 2.json 3.json again.json", 0).startswith(
        "9 frames: 9 written, 0 skipped, 0 failed, 0 missing\n")
    report = json.loads((folder / "3.json").read_text())
    report["frames"][2]["status"] = "missing"
    (folder / "3.json").write_text(json.dumps(report))
    told = json.loads(run("report --json 1.json again.json 3.json", 1))
    assert (told["missing_frames"], told["missing_chunks"], told["runs"]) == ([9], [2], 3), told

    # A run that cannot write stops there: what it did not come to, its report calls missing.
    (folder / "full").mkdir()
    for frame in range(2, 5):
        (folder / f"full/out.{frame:04}.png").mkdir()
    run("render --size 32x32 -f 1-4 -j 1 -o full/out.####.png --report full.json -q", 4)
    assert run("report full.json", 1).startswith("4 frames: 1 written, 0 skipped, 1 failed, 2 missing\n")

    (folder / "other.json").write_text('{"frames": []}')
    for name in ("other.json", "in.0001.png"):
        assert f"{name} is no report" in run(f"report 1.json {name}", 3)
    assert "cannot read gone.json" in run("report gone.json", 3)
    return 0


sys.exit(main())
