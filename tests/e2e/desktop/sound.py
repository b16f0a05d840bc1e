"""A private sound server with a virtual microphone, and speech to play into it."""

import os
import subprocess
from contextlib import contextmanager

from .processes import Child

MICROPHONE_INPUT = "microphone_input"
VOICE = "slt"
PLAYING_TIMEOUT_SECONDS = 60


class SoundServer:
    """What is played with `play` is heard by the microphone.

    The program's own sounds go to another device, so that the microphone doesn't hear them.
    """

    def __init__(self, directory, environment):
        self._directory = directory
        self._environment = environment
        self._socket = os.path.join(directory, "pulse-native")
        self._server = None
        environment["PULSE_SERVER"] = "unix:" + self._socket

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        if self.is_running():
            self._server.stop()

    def is_running(self):
        return self._server is not None and self._server.is_running()

    def start(self):
        # A source that monitors a device which can take back what it played holds everything back
        # for as long: up to two seconds that no microphone has.
        modules = [
            "module-native-protocol-unix auth-anonymous=1 socket=" + self._socket,
            "module-null-sink sink_name=speakers",
            "module-null-sink norewinds=1 sink_name=" + MICROPHONE_INPUT,
            "module-remap-source source_name=microphone master=%s.monitor "
            "source_properties=device.description=Microphone" % MICROPHONE_INPUT,
        ]
        command = ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no",
                   "--exit-idle-time=-1", "--realtime=no", "--high-priority=no",
                   "--log-target=stderr"]
        for module in modules:
            command += ["--load", module]
        self._server = Child(command, self._environment,
                             os.path.join(self._directory, "pulseaudio.log"))
        self._server.wait_until(self._has_microphone, "the sound server")
        for arguments in (["set-default-sink", "speakers"], ["set-default-source", "microphone"]):
            subprocess.run(["pactl", *arguments], env=self._environment, check=True)

    def kill(self):
        self._server.kill()

    def stop(self):
        self._server.stop()

    def suspend_microphone(self, is_suspended):
        """Puts the microphone to sleep as the server does with devices, or wakes it."""
        subprocess.run(["pactl", "suspend-source", "microphone", "%d" % is_suspended],
                       env=self._environment, check=True)

    def unplug_microphones(self):
        """Leaves the server without anything that can be recorded, until it is started again."""
        for module in ("module-remap-source", "module-null-sink"):
            subprocess.run(["pactl", "unload-module", module], env=self._environment, check=True)

    def hear_tone(self):
        """Lets the microphone hear a tone, until the server is started again."""
        subprocess.run(["pactl", "load-module", "module-sine", "sink=" + MICROPHONE_INPUT],
                       env=self._environment, check=True, stdout=subprocess.DEVNULL)

    def _has_microphone(self):
        sources = subprocess.run(["pactl", "list", "short", "sources"], env=self._environment,
                                 check=False, capture_output=True, encoding="utf-8").stdout
        return "\tmicrophone\t" in sources

    def play(self, path):
        """Plays a WAV file into the microphone and returns when the whole of it was heard."""
        with self.playing(path):
            pass

    @contextmanager
    def playing(self, path):
        """Plays a WAV file into the microphone during the block and to its end after it.

        The block gets a function that tells whether it still plays.
        """
        player = subprocess.Popen(["paplay", "--device=" + MICROPHONE_INPUT, path],
                                  env=self._environment)
        try:
            yield lambda: player.poll() is None
            if player.wait(PLAYING_TIMEOUT_SECONDS) != 0:
                raise AssertionError("could not play " + path)
        finally:
            player.kill()
            player.wait()


class Speech:
    """WAV files of spoken sentences, each made once, and of silence."""

    def __init__(self, directory):
        self._directory = directory
        self._paths = {}

    def wav(self, sentence):
        if sentence not in self._paths:
            path = os.path.join(self._directory, "speech-%d.wav" % len(self._paths))
            subprocess.run(["flite", "-voice", VOICE, "-t", sentence, "-o", path], check=True)
            self._paths[sentence] = path
        return self._paths[sentence]

    def silence(self, seconds):
        path = os.path.join(self._directory, "silence-%g.wav" % seconds)
        subprocess.run(["sox", "--null", "--rate", "16000", "--bits", "16", path,
                        "trim", "0", "%g" % seconds], check=True)
        return path
