"""Terminals with stand-in coding agents in them."""

import json
import os
import tempfile

from .processes import Child


class AgentTerminal:
    """An xterm in which an agent of a user runs in a project directory."""

    def __init__(self, desktop, home, agent="claude", project="project", place="+0+0",
                 bracketed_paste=True):
        directory = tempfile.mkdtemp(dir=desktop.directory)
        self._state_path = os.path.join(directory, "state.json")
        self._desktop = desktop
        working_directory = os.path.join(directory, project)
        os.mkdir(working_directory)
        command = ["xterm", "-fa", "Monospace", "-fs", "10", "-geometry", "72x16" + place,
                   "-e", home.install_agent(agent), self._state_path]
        if not bracketed_paste:
            command.append("--no-bracketed-paste")
        self._child = Child(command, {**desktop.environment, **home.environment},
                            os.path.join(directory, "xterm.log"), cwd=working_directory)

    def __enter__(self):
        self._child.wait_until(lambda: os.path.exists(self._state_path), "a listening agent")
        [self._window, *_] = self._child.wait_until(
            lambda: self._desktop.display.windows_of(self._child.pid), "the terminal's window")
        return self

    def __exit__(self, *_):
        if self._child.is_running():
            self._child.kill()

    @property
    def window(self):
        return self._window

    def kill(self):
        self._child.kill()

    def _state(self):
        with open(self._state_path, encoding="utf-8") as file:
            return json.load(file)

    @property
    def pasted(self):
        """The texts that were pasted into the agent's prompt, oldest first."""
        return self._state()["pasted"]

    @property
    def submitted(self):
        """The texts that the agent was told, oldest first."""
        return self._state()["submitted"]

    def wait_for_submission(self):
        self._child.wait_until(lambda: self.submitted, "a text submitted to the agent")

    def type_to_prompt(self, letter):
        """Presses a key in the terminal and returns what stands at the prompt then.

        The agent has read everything that was typed and pasted before.
        """
        self._desktop.display.focus(self._window)
        self._desktop.display.press(letter)
        self._child.wait_until(lambda: self._state()["prompt"].endswith(letter),
                               "%r at the agent's prompt" % letter)
        return self._state()["prompt"]
