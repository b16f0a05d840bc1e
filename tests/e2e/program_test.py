"""What the tests of the whole program share."""

import os
import shutil
import tempfile
import unittest

from desktop import Desktop, Home, Program, pocketsphinx_engine

SENTENCE = "please run the unit tests and fix the first failure"
SECOND_SENTENCE = "show me the history of this branch"


class ProgramTest(unittest.TestCase):
    """One desktop for all tests of a class; a user with an empty home for each of them."""

    make_desktop = Desktop

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(cls.make_desktop())

    def setUp(self):
        self.home = Home(tempfile.mkdtemp(dir=self.desktop.directory))
        self.home.install_engine(pocketsphinx_engine())

        self.output = os.path.join(os.environ["QUORVIN_E2E_OUTPUT"], self.id())
        shutil.rmtree(self.output, ignore_errors=True)
        os.makedirs(self.output)

    def start_program(self, executable="QUORVIN_EXECUTABLE", log="program.log", command=(),
                      **variables):
        """`executable` names the variable with its path; `variables` are added to its environment;
        `command` is a command line that starts the one that follows it.

        The log and a last picture of the screen are kept with the output of the tests.
        """
        program = self.enterContext(
            Program([*command, os.environ[executable]], self.desktop,
                    {**self.home.environment, **variables}, os.path.join(self.output, log)))
        self.addCleanup(program.screenshot, os.path.join(self.output, "screen.png"))
        return program

    def start_ready_program(self):
        """Starts it, waits until it can record and opens all parts of its window."""
        program = self.start_program()
        program.wait_until_ready()
        program.open_draft()
        program.open_activity()
        for line in program.log.splitlines():
            engine = line.partition("Found whisper-cpp binary: ")[2]
            if engine and not self.home.owns(engine):
                self.skipTest("%s is found before the recogniser of the test" % engine)
        return program

    def say(self, sentence):
        """Speaks a sentence into the microphone, from its first to its last word."""
        self.desktop.sound.play(self.desktop.speech.wav(sentence))

    def assert_nothing_left_behind(self):
        self.assertEqual(self.home.temporary_recordings(), [])
