"""A real Slurm of two nodes on this machine, in one folder and on the loopback address."""

import os
import pathlib
import shutil
import signal
import socket
import subprocess
import time

PROGRAMS = ("munged", "slurmctld", "slurmd", "sbatch", "scontrol", "squeue", "sinfo", "scancel")

CONFIGURATION = """\
ClusterName=test
SlurmctldHost={host}(127.0.0.1)
AuthType=auth/munge
AuthInfo=socket={folder}/munge.sock,cred_expire=5
CredType=cred/munge
SlurmUser=root
SlurmdUser=root
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool-%n
SlurmctldPidFile={folder}/controller.pid
SlurmdPidFile={folder}/node-%n.pid
SlurmctldLogFile={folder}/controller.log
SlurmdLogFile={folder}/node-%n.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
SchedulerParameters=sched_interval=5,batch_sched_delay=1
PreemptType=preempt/partition_prio
PreemptMode=REQUEUE
ReturnToService=2
SlurmctldPort={ports[0]}
SlurmdTimeout=10
KillWait=5
MpiDefault=none
SwitchType=switch/none
JobAcctGatherType=jobacct_gather/none
JobRequeue=1
NodeName=n1 NodeHostname={host} NodeAddr=127.0.0.1 Port={ports[1]} CPUs=1 State=UNKNOWN
NodeName=n2 NodeHostname={host} NodeAddr=127.0.0.1 Port={ports[2]} CPUs=1 State=UNKNOWN
PartitionName=farm Nodes=n[1-2] Default=YES MaxTime=INFINITE State=UP PriorityTier=1
PartitionName=urgent Nodes=n[1-2] MaxTime=INFINITE State=UP PriorityTier=2
"""


def missing():
    """What there must be and is not, in words; empty when a cluster can be made."""
    if os.geteuid() != 0:
        return "only root can make a cluster"
    absent = [program for program in PROGRAMS if shutil.which(program, path=search_path()) is None]
    return f"there is no {', '.join(absent)} here" if absent else ""


def search_path():
    return os.environ["PATH"] + ":/usr/sbin:/sbin"


def free_ports(count):
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [one.getsockname()[1] for one in sockets]
    for one in sockets:
        one.close()
    return ports


def wait_for(what, done, seconds):
    end = time.monotonic() + seconds
    while not (answer := done()):
        if time.monotonic() > end:
            raise TimeoutError(f"no {what} within {seconds} s")
        time.sleep(0.2)
    return answer


def watchers(processes):
    """The parents among Slurm's own of these processes."""
    parents = set()
    for pid in processes:
        status = pathlib.Path(f"/proc/{pid}/status").read_text()
        parent = int(status.split("PPid:")[1].split()[0])
        if pathlib.Path(f"/proc/{parent}/comm").read_text().startswith("slurmstepd"):
            parents.add(parent)
    return parents


class Cluster:
    """Its folder is kept until the cluster is left; all that runs in it names its configuration in
    the environment, and is ended by process id."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.folder.chmod(0o755)
        (self.folder / "state").mkdir()
        host = socket.gethostname().split(".")[0]
        self.conf = self.folder / "slurm.conf"
        self.conf.write_text(
            CONFIGURATION.format(host=host, folder=self.folder, ports=free_ports(3)))
        key = self.folder / "munge.key"
        key.write_bytes(os.urandom(1024))
        key.chmod(0o400)
        own = {"SLURM_CONF": str(self.conf), "PATH": search_path()}
        self.environment = {name: value for name, value in os.environ.items()
                            if not name.startswith(("SLURM", "SBATCH"))} | own
        self.started = {}

    def __enter__(self):
        try:
            files = [f"--{name}-file={self.folder}/munge.{name}" for name in ("pid", "log", "seed")]
            self.start("munged", "-F", "--force", f"--key-file={self.folder}/munge.key",
                       f"--socket={self.folder}/munge.sock", *files)
            wait_for("munged", (self.folder / "munge.sock").exists, 30)
            self.start("slurmctld", "-D")
            for node in ("n1", "n2"):
                self.start_node(node)
            wait_for("idle nodes", lambda: self.call("sinfo", "-h", "-p", "farm", "-t", "idle", "-o",
                                                     "%D").strip() == "2", 60)
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.started.values()):
            process.terminate()
        for process in self.started.values():
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        for pid in self.processes():
            os.kill(pid, signal.SIGKILL)

    def start(self, *line, name=None):
        log = open(self.folder / f"{name or line[0]}.out", "ab")
        self.started[name or line[0]] = subprocess.Popen(
            line, env=self.environment, stdin=subprocess.DEVNULL, stdout=log, stderr=log)

    def start_node(self, node):
        self.start("slurmd", "-D", "-N", node, name=node)

    def call(self, *line, cwd=None, **more):
        environment = self.environment | more
        done = subprocess.run(line, env=environment, cwd=cwd, capture_output=True, text=True)
        if done.returncode != 0:
            raise RuntimeError(f"{' '.join(line)}: {done.stderr}")
        return done.stdout

    def processes(self, node=None):
        """Ids of what runs in the cluster, or on one of its nodes."""
        marks = {f"SLURM_CONF={self.conf}".encode()}
        if node is not None:
            marks.add(f"SLURMD_NODENAME={node}".encode())
        found = []
        for entry in pathlib.Path("/proc").iterdir():
            if not entry.name.isdigit() or int(entry.name) == os.getpid():
                continue
            try:
                if marks <= set((entry / "environ").read_bytes().split(b"\0")):
                    found.append(int(entry.name))
            except OSError:  # it ended
                pass
        return found

    def kill_node(self, node):
        """As when the machine's plug is pulled."""
        self.started[node].kill()
        self.started[node].wait()
        running = self.processes(node)
        # First what watches over them: it would tell the controller that they died.
        for pid in watchers(running) | set(running):
            os.kill(pid, signal.SIGSTOP)
        for pid in watchers(running) | set(running):
            os.kill(pid, signal.SIGKILL)

    def submit(self, *arguments, cwd, **more):
        return self.call("sbatch", "--parsable", *arguments, cwd=cwd, **more).strip()

    def tasks(self, job):
        """Of each task of a job that the controller still knows: its fields by name."""
        shown = self.call("scontrol", "-o", "show", "job", job)
        return [dict(field.split("=", 1) for field in line.split() if "=" in field)
                for line in shown.splitlines() if line]

    def states(self, job):
        return [task["JobState"] for task in self.tasks(job)]

    def wait_until_over(self, job, seconds):
        live = {"PENDING", "RUNNING", "COMPLETING", "REQUEUED", "CONFIGURING", "SUSPENDED"}
        wait_for(f"end of job {job}", lambda: not live & set(self.states(job)), seconds)
