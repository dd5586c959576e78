"""The router of the process: each test in a process of its own."""
import subprocess
import sys

import pytest

PROFILE = {"product": {"id": 1}, "chassis": {"fpc-slots": 3},
           "types": {"new": {"pic-slots": 2, "ports": 4, "flags": ["channels"], "channels": [7]},
                     'od"d\\': {"flags": []}}}


def run(*lines):
    code = "import threading, orvex_parse as op\nfrom orvex_parse import columns\n" + "\n".join(lines)
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    return done.stdout.splitlines()


def test_dict_and_file(tmp_path):
    path = tmp_path / "router.toml"
    path.write_text("[chassis]\nfpc-slots = 2\n")
    # The second replaces the first as a whole.
    assert run(f"op.use_profile({str(path)!r})", f"op.use_profile({PROFILE!r})",
               "print(op.interface('new-2/1/3:6'))",
               "print(columns.interface(['eth-3/0/0', 'new-0/0/0']).messages())") == [
        "new-2/1/3:6", "{0: \"fpc value outside range 0..2 for '3/0/0' in 'eth-3/0/0'\"}"]


@pytest.mark.parametrize("profile, message", [
    ({"chassis": {"fpc-slots": "two"}}, "fpc-slots: expected an integer"),
    ({"chassy": {}}, 'found the key "chassy"'),
])
def test_faults(profile, message):
    # What a refused profile has changed is not kept.
    printed = run("try:", f"    op.use_profile({profile!r})", "except ValueError as e: print(e)",
                  "op.use_profile({'chassis': {'fpc-slots': 1}})", "print(op.interface('eth-0/0/0'))")
    assert message in printed[0] and printed[0].startswith("profile:") and printed[-1] == "eth-0/0/0"


@pytest.mark.parametrize("read", ["op.interface('lo0')", "columns.interface(['lo0'] * 100000, threads=2)",
                                  "op.is_alias('uplink-to-core')"])
def test_not_after_a_name(read):
    assert run("op.ip('10.0.0.1')", read, "try: op.use_profile({})",
               "except RuntimeError as e: print(e)") == [
        "the router must be described before the first interface name or alias is read"]


def test_missing_file():
    assert run("try: op.use_profile('none.toml')", "except FileNotFoundError: print('none')") == ["none"]


def test_multi_chassis():
    profile = {"product": {"multi-chassis-size": 4},
               "chassis": {"kind": "line-card", "fpc-slots": 16, "global-slots": "a", "root": True,
                           "local-to-global": {"first": 64, "slots-per-lcc": 16}}}
    assert run(f"op.use_profile({profile!r})", "name = op.interface('lcc1:eth-1/2/0/3')",
               "print(name, name.chassis, name.fpc)") == ["lcc1:eth-1/2/0/3 lcc1 82"]


def test_container_reads_no_parts():
    assert run("op.use_profile({'product': {'container': True}})", "print(repr(op.interface('net1').type))",
               "print(op.interface('net1'))") == ["''", "net1"]
