"""The example for a cluster, whole and with a worker that is killed."""
import os
import signal
import sys
from pathlib import Path

import numpy as np
from dask.distributed import Client, LocalCluster

sys.path.insert(0, str(Path(__file__).parents[2] / "examples"))
import dask_column  # noqa: E402

LINES = ["10.0.0.1", "2001:db8::1/32", "eth-1/2/0.5", "nonsense", ""]


def write_lines(path, times):
    path.write_text("\n".join(LINES * times) + "\n")


def test_partitions_are_whole_lines(tmp_path):
    path = tmp_path / "texts"
    for text in b"", b"one", b"one\n", b"one\n\ntwo\nthree":
        path.write_bytes(text)
        for size in 1, 4, 100:
            parts = [text[start:end] for start, end in dask_column.partitions_of(path, size)]
            assert b"".join(parts) == text and all(part.endswith(b"\n") for part in parts[:-1])


def test_survives_a_killed_worker(tmp_path, monkeypatch):
    path, results = tmp_path / "texts", tmp_path / "results"
    write_lines(path, 4000)
    with LocalCluster(n_workers=2, threads_per_worker=1, processes=True,
                      dashboard_address=None) as cluster, Client(cluster) as client:
        workers = []

        def kill_one(done, total, started):
            if done == total // 4:
                workers.extend(client.run(os.getpid).values())
                os.kill(workers[0], signal.SIGKILL)

        monkeypatch.setattr(dask_column, "show", kill_one)
        counts = dask_column.run(client, path, results, 4096)
    assert workers and counts == {"IPv4": 4000, "IPv6": 4000, "interface": 4000, "other": 8000}
    written = [np.load(file) for file in sorted(results.glob("*.npz"))]
    assert np.concatenate([part["family"] for part in written]).tolist() == [0, 1, 2, 3, 3] * 4000
    assert not list(results.glob("*.partial"))
