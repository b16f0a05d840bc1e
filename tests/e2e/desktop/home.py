"""The private directories of one user: settings, data, models, temporary files, commands."""

import glob
import json
import os
import sqlite3

SYSTEM_PATH = "/usr/bin:/bin"
ENGINE_NAME = "whisper-cpp"
MODEL_NAME = "ggml-base.bin"
STAND_IN_AGENT = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))),
                              "stand_in", "agent")


class Home:
    """Made in an empty directory, for a user who has been through the introduction."""

    def __init__(self, directory):
        self.directory = directory
        self._bin = os.path.join(directory, "bin")
        self._config = os.path.join(directory, "config")
        self._data = os.path.join(directory, "data")
        self._temporary = os.path.join(directory, "tmp")
        self._runtime = os.path.join(directory, "run")
        for path in (self._bin, self._config, self._data, self._temporary):
            os.makedirs(path)
        os.mkdir(self._runtime, 0o700)
        self.write_settings(json.dumps({"onboardingComplete": True}))

    @property
    def environment(self):
        return {
            "HOME": self.directory,
            "PATH": self._bin + ":" + SYSTEM_PATH,
            "TMPDIR": self._temporary,
            "XDG_CACHE_HOME": os.path.join(self.directory, "cache"),
            "XDG_CONFIG_HOME": self._config,
            "XDG_DATA_HOME": self._data,
            "XDG_RUNTIME_DIR": self._runtime,
        }

    @property
    def settings_path(self):
        return os.path.join(self._config, "quorvin", "settings.json")

    def write_settings(self, text):
        os.makedirs(os.path.dirname(self.settings_path), exist_ok=True)
        with open(self.settings_path, "w", encoding="utf-8") as settings:
            settings.write(text)

    def files_beside_settings(self):
        """The contents, by path, of everything else in the settings' directory."""
        pattern = os.path.join(os.path.dirname(self.settings_path), "*")
        contents = {}
        for path in set(glob.glob(pattern)) - {self.settings_path}:
            with open(path, encoding="utf-8", errors="replace") as other:
                contents[path] = other.read()
        return contents

    def owns(self, path):
        return path.startswith(self.directory + os.sep)

    def install_engine(self, script):
        """Puts a recogniser into the PATH, in the place of the one before, and a model beside it.

        `script` is the text of a script.
        """
        os.makedirs(os.path.dirname(self.model), exist_ok=True)
        with open(self.model, "w", encoding="utf-8") as model:
            model.write("A placeholder: the recognisers of the tests read no model.\n")
        self._install_command(ENGINE_NAME, script)

    def remove_engine(self):
        os.remove(os.path.join(self._bin, ENGINE_NAME))

    def install_agent(self, name):
        """Puts the stand-in agent into the PATH under a name and returns its path."""
        with open(STAND_IN_AGENT, encoding="utf-8") as script:
            return self._install_command(name, script.read())

    def _install_command(self, name, script):
        path = os.path.join(self._bin, name)
        # Written aside and renamed: the old one may be running at this moment.
        with open(path + ".new", "w", encoding="utf-8") as command:
            command.write(script)
        os.chmod(path + ".new", 0o755)
        os.replace(path + ".new", path)
        return path

    @property
    def model(self):
        return os.path.join(self.directory, "models", MODEL_NAME)

    def history(self):
        """The rows of the history database, oldest first."""
        database = sqlite3.connect(
            "file:%s?mode=ro" % os.path.join(self._data, "quorvin", "history.db"), uri=True)
        try:
            database.row_factory = sqlite3.Row
            return [dict(row) for row in database.execute("SELECT * FROM history ORDER BY id")]
        finally:
            database.close()

    def temporary_recordings(self):
        return glob.glob(os.path.join(self._temporary, "**", "*.wav"), recursive=True)

    def write_temporary(self, name):
        path = os.path.join(self._temporary, name)
        with open(path, "w", encoding="utf-8"):
            return path

    def block_data_directory(self):
        """Puts a file where the program wants to make its directory."""
        with open(os.path.join(self._data, "quorvin"), "w", encoding="utf-8"):
            pass
