"""Reads a file of texts, one a line, on a cluster of two worker processes, and counts them by family.

    dask_column.py texts.txt results/

A line is an address, an interface name, or anything else. Each partition of the file becomes an .npz
file of the same number in the folder of the results: the family of each line, its address, and the
line numbers of those that are neither. A worker that is lost on the way costs its partitions' time
only: others read them again.
"""
import argparse
import sys
import time
from pathlib import Path

import numpy as np
from dask.distributed import Client, LocalCluster, as_completed

from orvex_parse import columns

FAMILIES = ["IPv4", "IPv6", "interface", "other"]


def partitions_of(path: Path, size: int) -> list[tuple[int, int]]:
    """Where in the file the partitions are: each of about `size` bytes, to the end of a line."""
    ends = [0]
    with path.open("rb") as file:
        while True:
            file.seek(ends[-1] + size)
            file.readline()
            end = min(file.tell(), path.stat().st_size)
            if end == ends[-1]:
                return list(zip(ends, ends[1:]))
            ends.append(end)


def read_partition(path: Path, results: Path, number: int, start: int, end: int) -> list[int]:
    """Writes the results of a partition, and returns how many lines each family has."""
    with path.open("rb") as file:
        file.seek(start)
        lines = file.read(end - start).splitlines()
    addresses = columns.ip(lines, prefix=True)
    names = columns.interface(lines)
    family = np.select([addresses.version == 4, addresses.version == 6, names.accepted], [0, 1, 2], 3)
    # Complete or not there at all, also when the worker is lost while it writes.
    written = results / f"{number:06}.npz"
    partial = written.with_suffix(f".{start}.partial")
    with partial.open("wb") as file:
        np.savez(file, family=family.astype(np.uint8), address=addresses.address,
                 prefix_length=addresses.prefix_length, refused=np.flatnonzero(family == 3))
    partial.rename(written)
    return list(map(int, np.bincount(family, minlength=len(FAMILIES))))


def show(done: int, total: int, started: float) -> None:
    """On a terminal, a line that is written over."""
    if sys.stderr.isatty():
        end = "\n" if done == total else ""
        print(f"\r{done}/{total} partitions, {time.monotonic() - started:.1f} s", end=end,
              file=sys.stderr, flush=True)


def run(client: Client, path: Path, results: Path, size: int) -> dict[str, int]:
    """Reads the file and returns the count by family."""
    results.mkdir(parents=True, exist_ok=True)
    counts = np.zeros(len(FAMILIES), dtype=int)
    partitions = partitions_of(path, size)
    started = time.monotonic()
    # Nothing else refers to the futures, so that a partition that is counted is not read again for
    # a worker that is lost later.
    futures = as_completed([client.submit(read_partition, path, results, number, start, end)
                            for number, (start, end) in enumerate(partitions)], with_results=True)
    for done, (_, found) in enumerate(futures, 1):
        counts += found
        show(done, len(partitions), started)
    return dict(zip(FAMILIES, counts.tolist()))


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("texts", type=Path)
    parser.add_argument("results", type=Path)
    parser.add_argument("--partition-size", type=int, default=1 << 20, metavar="BYTES")
    arguments = parser.parse_args()
    # Processes that a nanny starts again, with a thread each: the columns are read one by one.
    with LocalCluster(n_workers=2, threads_per_worker=1, processes=True,
                      dashboard_address=None) as cluster, Client(cluster) as client:
        counts = run(client, arguments.texts.resolve(), arguments.results.resolve(),
                     arguments.partition_size)
    for family, count in counts.items():
        print(f"{family}: {count}")


if __name__ == "__main__":
    main()
