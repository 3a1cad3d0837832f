"""Renders on a real Slurm of two nodes: slurm.py PROGRAM SCRIPT. Ends with 77 where there can be none.

A node dies in the middle of a run; a wrong line; a run that is preempted, goes on and is cancelled.
"""

import pathlib
import subprocess
import sys
import tempfile

import cluster

SKIPPED = 77
HEAVY = ["--size", "1280x720", "--look", "impact-fan", "--set", "Density of Lines=1000",
         "--set", "Thickness=40", "--key", "Offset@1=0,@60=500"]


class Farm:
    """Submits the script, with a folder for each run."""

    def __init__(self, slurm, program, script, folder):
        self.slurm, self.program, self.script = slurm, program, script
        self.folder = pathlib.Path(folder)

    def place(self, name):
        folder = self.folder / name
        folder.mkdir()
        return folder

    def submit(self, folder, array, *line, **environment):
        return self.slurm.submit(f"--array={array}", self.script, "-o", "out.####.png", *line,
                                 cwd=folder, STREAKFALL=self.program, **environment)

    def run(self, *line, cwd):
        return subprocess.run([self.program, *line], cwd=cwd, capture_output=True, text=True)


def frames_in(folder):
    return {path.name: path.read_bytes() for path in folder.glob("out.*.png")}


def logs_of(folder):
    return "\n".join(path.read_text() for path in sorted(folder.glob("*.log")))


def check(holds, what):
    if not holds:
        raise AssertionError(what)


def a_node_dies(farm):
    plain, folder = farm.place("plain"), farm.place("died")
    frames = ["-f", "1-60", *HEAVY]
    job = farm.submit(folder, "1-12", *frames)
    cluster.wait_for("dozen of frames", lambda: len(frames_in(folder)) >= 12, 60)
    cluster.wait_for("run on n1", lambda: farm.slurm.processes("n1"), 30)
    farm.slurm.kill_node("n1")
    check(len(frames_in(folder)) < 60, "the node died too late to matter")
    farm.slurm.wait_until_over(job, 180)
    check(set(farm.slurm.states(job)) == {"COMPLETED"}, farm.slurm.states(job))
    check("run 2" in logs_of(folder), "no task was requeued")

    done = farm.run("render", "-o", "out.####.png", "-q", *frames, cwd=plain)
    check(done.returncode == 0, done.stderr)
    check(frames_in(folder) == frames_in(plain), "frames differ from those of a plain run")
    check(len(frames_in(folder)) == 60, "not 60 frames")
    reports = [path.name for path in folder.glob("*.json")]
    added = farm.run("report", *reports, cwd=folder)
    check(added.returncode == 0 and added.stdout.startswith("60 frames: "), added.stdout)
    check("0 failed, 0 missing" in added.stdout and "chunks: 12 of 12" in added.stdout, added.stdout)
    farm.slurm.start_node("n1")


def a_wrong_line(farm):
    folder = farm.place("wrong")
    job = farm.submit(folder, "1-3", "--size", "64x48", "-f", "1-9", "--set", "Nonsense=3")
    farm.slurm.wait_until_over(job, 60)
    for task in farm.slurm.tasks(job):
        check((task["JobState"], task["ExitCode"], task["Restarts"]) == ("FAILED", "2:0", "0"), task)
    log = logs_of(folder)
    check(log.count('there is no parameter "Nonsense"') == 3 and "requeued" not in log, log)


def preempted_and_cancelled(farm):
    folder, plain = farm.place("cancelled"), farm.place("wanted")
    slow = ["-f", "1-80", *HEAVY]
    job = farm.submit(folder, "0-2:2", *slow)  # indices that neither begin at 1 nor go by 1
    cluster.wait_for("first frames", lambda: len(frames_in(folder)) >= 4, 60)
    farm.slurm.submit("--partition=urgent", "--wrap", "sleep 2", cwd=folder)
    cluster.wait_for("second run", lambda: "run 2" in logs_of(folder), 90)
    check("interrupted: " in logs_of(folder), logs_of(folder))
    farm.slurm.call("scancel", job)
    farm.slurm.wait_until_over(job, 60)
    check("CANCELLED" in farm.slurm.states(job), farm.slurm.states(job))
    cluster.wait_for("end of all", lambda: not farm.slurm.processes("n1") + farm.slurm.processes("n2"), 30)

    left = {path.name for path in folder.iterdir() if not path.name.endswith((".log", ".json", ".out"))}
    check(left == set(frames_in(folder)), f"left behind: {left}")
    for name, content in frames_in(folder).items():
        frame = str(int(name.split(".")[1]))
        farm.run("render", "-o", "out.####.png", "-q", "-f", frame, *HEAVY, cwd=plain)
        check((plain / name).read_bytes() == content, f"{name} is not whole")


def main():
    program, script = (str(pathlib.Path(argument).resolve()) for argument in sys.argv[1:])
    if absent := cluster.missing():
        print(absent)
        return SKIPPED
    with tempfile.TemporaryDirectory() as own, tempfile.TemporaryDirectory() as shared:
        slurm = cluster.Cluster(own)
        try:
            with slurm:
                farm = Farm(slurm, program, script, shared)
                for scene in (a_wrong_line, preempted_and_cancelled, a_node_dies):
                    scene(farm)
                    print(f"{scene.__name__}: as it should be", flush=True)
        except BaseException:
            print((slurm.folder / "controller.log").read_text()[-4000:])
            for log in pathlib.Path(shared).glob("*/*.log"):
                print(log, log.read_text(), sep="\n")
            raise
        check(not slurm.processes(), f"left running: {slurm.processes()}")
    return 0


sys.exit(main())
