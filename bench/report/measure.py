"""Runs the benchmarks and keeps all figures in one file.

    measure.py --build build/release --results build/bench/results.json [--quick] [--records N]

Stores of records are filled in memory and read there, moved to a disk for durable writes, and taken
away before the next ones.
"""

import argparse
import datetime
import json
import os
import platform
import shutil
import subprocess
import sys
import tempfile
from contextlib import contextmanager
from dataclasses import asdict, dataclass
from pathlib import Path

MEMORY = Path("/dev/shm")
KINDS = ("header", "row")

# What a record takes in the files of all stores together, with some to spare.
BYTES_PER_RECORD = {"header": 11_500, "row": 2_100}

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


@dataclass
class Settings:
    quick: bool
    records: list[int]
    repetitions: int
    seconds_a_figure: float
    transactions: int
    posts: int
    load_seconds: int


def settings_for(quick, most):
    most = most or (10_000 if quick else 1_000_000)
    records = [10 ** power for power in range(3, 8) if 10 ** power <= most]
    if quick:
        return Settings(True, records, 3, 0.02, 2_000, 100, 10)
    return Settings(False, records, 5, 0.1, 20_000, 1_000, 60)


class Progress:
    """Tells a terminal what is being done, in one line that changes."""

    def __init__(self, stream=sys.stdout):
        self.stream = stream

    def say(self, text):
        if self.stream.isatty():
            self.stream.write(f"\r\x1b[K{text}")
            self.stream.flush()


def figures_of(report):
    """The medians in a report of the benchmark program.

    Names are KIND/OPERATION/RECORDS/STORE; where stores took turns they are KIND/PHASE/RECORDS, with
    counters OPERATION/STORE in microseconds.
    """
    aggregates = any(run.get("aggregate_name") for run in report["benchmarks"])
    for run in report["benchmarks"]:
        if aggregates and run.get("aggregate_name", "median") != "median":
            continue
        kind, operation, records, *store = run["run_name"].split("/")
        counters = {name: value for name, value in run.items() if "/" in name}
        if counters:
            for name, microseconds in counters.items():
                yield figure(kind, *name.split("/"), int(records), microseconds * 1e3)
        elif run["run_type"] == "aggregate" or not aggregates:
            time = run["real_time" if "real_time" in store else "cpu_time"]
            yield figure(kind, operation, store[0], int(records),
                         time * NANOSECONDS[run["time_unit"]])


def figure(kind, operation, store, records, nanoseconds):
    return {"kind": kind, "operation": operation, "store": store, "records": records,
            "nanoseconds": nanoseconds}


class Program:
    """The benchmark program."""

    def __init__(self, path, settings):
        self.path = path
        self.settings = settings

    def run(self, *words):
        """Runs a part; its words are shown only where it fails."""
        run = subprocess.run([self.path, *map(str, words)], check=False, stdout=subprocess.DEVNULL,
                             stderr=subprocess.PIPE, text=True)
        if run.returncode != 0:
            sys.exit(f"{run.stderr}larkmoor_bench {words[0]} ended with {run.returncode}.")

    def measure(self, *words, repeated=True):
        """The figures of a part, the stores taking turns."""
        options = [f"--benchmark_min_time={self.settings.seconds_a_figure}"]
        if repeated:
            options += [f"--benchmark_repetitions={self.settings.repetitions}",
                        "--benchmark_enable_random_interleaving=true"]
        with tempfile.TemporaryDirectory() as folder:
            report = Path(folder) / "report.json"
            self.run(*words, *options, f"--benchmark_out={report}", "--benchmark_out_format=json")
            return list(figures_of(json.loads(report.read_text("utf-8"))))


@contextmanager
def folder_in(parent):
    """A folder that goes away."""
    with tempfile.TemporaryDirectory(prefix="larkmoor-bench-", dir=parent) as folder:
        yield Path(folder)


def require_room(place, wanted):
    free = shutil.disk_usage(place).free
    if free < wanted:
        sys.exit(f"There are {free / 1e9:.1f} GB free at {place}, and {wanted / 1e9:.1f} GB are "
                 "needed. Please make room, or measure less with --records.")


def memory_or_disk():
    return MEMORY if MEMORY.is_dir() else Path(tempfile.gettempdir())


def move_to_disk(source, target):
    """File by file, so that memory becomes free as the disk fills."""
    for file in sorted(source.iterdir()):
        if file.name.endswith("-lock"):
            continue
        copy = target / file.name
        shutil.copyfile(file, copy)
        file.unlink()
        with copy.open("rb+") as written:
            os.fsync(written.fileno())


def measure_records(program, kind, records, progress):
    name = f"{records:,} {kind}s"
    with folder_in(memory_or_disk()) as memory, folder_in(None) as disk:
        progress.say(f"{name}: filling the stores")
        program.run("fill", kind, records, memory)
        progress.say(f"{name}: reading")
        figures = program.measure("reads", kind, records, memory)
        progress.say(f"{name}: writing in bulk")
        figures += program.measure("bulk", kind, records, memory, repeated=False)
        progress.say(f"{name}: writing in memory")
        figures += program.measure("memory_writes", kind, records, memory, repeated=False)
        progress.say(f"{name}: moving to the disk")
        move_to_disk(memory, disk)
        progress.say(f"{name}: writing to the disk")
        return figures + program.measure("durable", kind, records, disk, repeated=False)


def measure_jobs(program, settings, progress):
    progress.say("whole jobs")
    reads = program.measure("jobs", settings.transactions, settings.posts, "--benchmark_filter="
                            "job/(walk|find|payroll|resolve|export)")
    progress.say("whole jobs: writing")
    writes = program.measure("jobs", settings.transactions, settings.posts,
                             "--benchmark_filter=job/(post|load)", repeated=False)
    return reads + writes


def measure_load(build, settings, progress):
    """Eight processes on one company; nothing where the program is not there."""
    program = next((build / "tests").rglob("larkmoor_company_load"), None)
    if program is None:
        return None
    progress.say("eight processes on one company")
    run = subprocess.run([program, "--seconds", str(settings.load_seconds)], check=False,
                         capture_output=True, text=True)
    return json.loads(run.stdout) if run.returncode == 0 else {"failure": run.stderr.strip()}


def word_of(*command):
    return subprocess.run(command, check=False, capture_output=True, text=True).stdout.strip()


def machine():
    processor = next((line.split(":", 1)[1].strip()
                      for line in Path("/proc/cpuinfo").read_text("utf-8").splitlines()
                      if line.startswith("model name")), platform.machine())
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES")
    return {"processor": processor, "cores": os.cpu_count(), "memory_gb": round(memory / 2**30),
            "system": platform.freedesktop_os_release()["PRETTY_NAME"],
            "compiler": word_of("g++", "--version").splitlines()[0],
            "load_before": os.getloadavg()[0]}


def main():
    parser = argparse.ArgumentParser(description="Runs the benchmarks.")
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--results", type=Path, required=True)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--records", type=int)
    options = parser.parse_args()

    settings = settings_for(options.quick, options.records)
    for kind in KINDS:
        wanted = BYTES_PER_RECORD[kind] * max(settings.records)
        require_room(memory_or_disk(), wanted)
        require_room(tempfile.gettempdir(), wanted)

    results = {"date": datetime.date.today().isoformat(),
               "commit": word_of("git", "describe", "--always", "--dirty"),
               "machine": machine(), "settings": asdict(settings)}
    program = Program(options.build / "bench/larkmoor_bench", settings)
    progress = Progress()
    figures = []
    for records in settings.records:
        for kind in KINDS:
            figures += measure_records(program, kind, records, progress)
    figures += measure_jobs(program, settings, progress)
    results["company_load"] = measure_load(options.build, settings, progress)
    results["figures"] = figures
    progress.say("")
    options.results.parent.mkdir(parents=True, exist_ok=True)
    options.results.write_text(json.dumps(results, indent=1) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
