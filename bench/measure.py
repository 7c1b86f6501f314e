"""Common parts of the measurements: paths, and one timed run of a program."""
import argparse
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent


def parser(description):
    result = argparse.ArgumentParser(description=description)
    result.add_argument("--build", type=pathlib.Path, default=ROOT / "build/release", help="the build folder")
    return result


class Programs:
    """The programs of a build, all using the in-memory host."""

    def __init__(self, build, ports=2, targets=0, luns=0):
        """A host with this many ports, targets per port and LUNs per target."""
        build = build.resolve()
        self.tool = str(build / "orfc-esxcli")
        self.empty = str(build / "bench/empty_program")
        self.host_only = str(build / "bench/host_only")
        self.path_loop = str(build / "bench/path_loop")
        self.log_loop = str(build / "bench/log_loop")
        self.printf_loop = str(build / "bench/printf_loop")
        self.stopwatch = str(build / "bench/stopwatch")
        self.environment = {
            "PATH": "/usr/bin:/bin",
            "LD_LIBRARY_PATH": str(build / "bench/memory_host"),
            "VEXAPI_BENCH_PORTS": str(ports),
            "VEXAPI_BENCH_TARGETS": str(targets),
            "VEXAPI_BENCH_LUNS": str(luns),
        }

    def run(self, command, output=subprocess.DEVNULL):
        """Runs a command. Returns its wall and processor time in seconds and its peak memory in KiB."""
        run = subprocess.run([self.stopwatch, *command], env=self.environment, stdout=output, stderr=subprocess.PIPE,
                             text=True)
        if run.returncode != 0:
            raise SystemExit(f"{' '.join(command)}: {run.stderr}")
        wall, processor, kibibytes = map(int, run.stderr.split())
        return wall / 1e9, processor / 1e9, kibibytes

    def instructions(self, command):
        """The instructions of a run, including the loader's, and its output."""
        run = subprocess.run(
            ["/usr/bin/valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
            env=self.environment, capture_output=True, text=True, check=True)
        return int(re.search(r"Collected : (\d+)", run.stderr)[1]), run.stdout
