#!/bin/bash
# Checks the format of all sources with clang-format, and the sources given, or all, with clang-tidy.
# It takes the compiler's options from the build in build/dev.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh lint

mapfile -t formatted < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run -Werror "${formatted[@]}"

if (($# > 0)); then
    sources=("$@")
else
    mapfile -t sources < <(git ls-files 'src/*.cpp' 'tests/*.cpp' 'bench/*.cpp' ':!tests/fuzz/*')
fi

# The same commands for each source by itself, and without another compiler's precompiled headers.
mkdir -p build/lint
/usr/bin/python3 - build/dev/compile_commands.json build/lint/compile_commands.json <<'PYTHON'
import json
import re
import sys

commands = []
with open(sys.argv[1], encoding="utf-8") as file:
    for entry in json.load(file):
        command = re.sub(r" -Winvalid-pch -include \S+/cmake_pch\.hxx| -Wno-subobject-linkage", "", entry["command"])
        sources = [entry["file"]]
        if re.search(r"/unity_\w+\.cxx$", entry["file"]):
            with open(entry["file"], encoding="utf-8") as together:
                sources = re.findall(r'^#include "(.+)"$', together.read(), re.MULTILINE)
        for source in sources:
            commands.append({**entry, "file": source,
                             "command": command.replace(entry["file"], source)})
with open(sys.argv[2], "w", encoding="utf-8") as file:
    json.dump(commands, file, indent=1)
PYTHON
printf '%s\0' "${sources[@]}" |
    xargs --null --max-procs="$(nproc)" --max-args=1 clang-tidy -p build/lint --quiet
