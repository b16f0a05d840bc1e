#!/bin/bash
# Runs a command in a process table of its own, where the system allows it: the agents that run in
# this machine's terminals are out of the program's sight, and nothing outlives the command.
set -euo pipefail

alone=(unshare --pid --fork --kill-child --mount-proc)
if ((EUID != 0)); then
    alone+=(--user --map-current-user)
fi
if ! "${alone[@]}" true 2>/dev/null; then
    alone=()
fi
exec "${alone[@]}" "$@"
