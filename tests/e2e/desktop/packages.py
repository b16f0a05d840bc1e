"""What users install, made of the program under test."""

import os
import subprocess
from pathlib import Path

SOURCE_TREE = Path(__file__).resolve().parents[3]


def build_tree():
    """Where the program under test was built."""
    return Path(os.environ["QUORVIN_EXECUTABLE"]).resolve().parent.parent


def make_packages(directory):
    """Returns the paths of the archive with the bundle and of the Debian package."""
    output = subprocess.run(
        [SOURCE_TREE / "scripts/package.sh", "--build-dir", build_tree(), directory],
        check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout
    archive, debian_package = output.split()
    return Path(archive), Path(debian_package)


def unpack(archive, directory):
    """Unpacks a bundle below a directory, which may not exist yet, and returns its path."""
    os.makedirs(directory, exist_ok=True)
    subprocess.run(["tar", "-xzf", archive, "-C", directory], check=True)
    return Path(directory) / "Quorvin.app"
