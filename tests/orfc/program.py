"""Runs of the second program, and hosts for them. What it leaves is in a folder that ends with the test."""
import functools
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["BUILD"])
PROGRAM = str(BUILD / "orfc")
FOLDER = tempfile.TemporaryDirectory(prefix="orfc-test-")
NAME = "FC_21:00:00:24:ff:0a:51:c4"  # the lab's first port
TREES = ("fcoe", "degraded", "npiv")


def run(*words, library=None, host=None, tree=None, environment=(), text=True, **more):
    """The finished process. Without a host or tree it is the lab's."""
    command = [PROGRAM, *words]
    if tree is not None:
        command += ["--root", tree_folder(tree)]
    if library is not None:
        command += ["--library", str(library)]
    more = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **more}
    return subprocess.run(command, env=environment_of(host, environment), text=text, timeout=60, check=False, **more)


def environment_of(host=None, more=()):
    environment = dict(os.environ, VEXAPI_SIM_STATE="", **dict(more))
    if host is not None:
        environment["VEXAPI_SIM_HOST"] = str(host)
    return environment


def path_of(name):
    return pathlib.Path(FOLDER.name) / name


def host_file(name, description):
    """The file of a described host."""
    file = path_of(f"{name}.json")
    file.write_text(description if isinstance(description, str) else json.dumps(description))
    return file


def tree_folder(name):
    """A folder with a captured tree, made once."""
    folder = path_of(name)
    if not folder.exists():
        subprocess.run([ROOT / "tests/hosts/tree", "unpack", ROOT / f"tests/data/sysfs/{name}.tree", folder], check=True)
    return str(folder)


def library_without(name, source=BUILD / "libvexapi_fconly.so"):
    """A copy of a library in which the names that begin so have another letter, and so can't be found."""
    data = source.read_bytes()
    assert f"\0{name}".encode() in data, name
    file = path_of("libwithout.so")
    file.write_bytes(data.replace(f"\0{name}".encode(), f"\0{name[:-1]}~".encode()))
    return file


def functions():
    """The names of the library's 62 functions."""
    names = re.findall(r"^ +X\((VEXAPI_\w+)\)", (ROOT / "library/functions.h").read_text(), re.MULTILINE)
    return [name for name in names if not name.startswith("VEXAPI_Ext")]


@functools.cache
def commands():
    """Words of a run of each command that shows a host. Those that need a name have `NAME`."""
    description = json.loads(run("describe").stdout)
    return [[*command["name"].split(), *([NAME] if command["needs_names"] else []),
             *(["--count", "1"] if command["name"] == "ping" else []),
             *(["--state", ""] if any(option["name"] == "--state" for option in command["options"]) else [])]
            for command in description["commands"] if command["name"] in description["records"]]


def records(*words, **more):
    """The records of a JSON answer."""
    finished = run(*words, "-o", "json", **more)
    assert finished.returncode == 0, finished.stderr
    return json.loads(finished.stdout)["records"]
