"""The stand-in recogniser itself, without the program."""

import os
import subprocess
import tempfile
import unittest

from desktop import word_errors
from desktop.engines import STAND_IN
from desktop.sound import Speech
from program_test import SECOND_SENTENCE, SENTENCE


class StandInTests(unittest.TestCase):
    def setUp(self):
        self.directory = self.enterContext(tempfile.TemporaryDirectory())
        self.speech = Speech(self.directory)
        self.model = os.path.join(self.directory, "ggml-base.bin")
        with open(self.model, "w", encoding="utf-8"):
            pass

    def run_on(self, recording, *options):
        return subprocess.run(
            [STAND_IN, "-m", self.model, "-f", recording, "-nt", "-np", *options],
            check=False, capture_output=True, encoding="utf-8")

    def test_it_understands_different_sentences(self):
        for sentence in (SENTENCE, SECOND_SENTENCE):
            result = self.run_on(self.speech.wav(sentence), "-l", "en", "-t", "4")
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertRegex(result.stdout, r"\A\n .+\n\Z")
            self.assertLessEqual(word_errors(sentence, result.stdout), 1, result.stdout)

    def test_it_hears_nothing_in_silence(self):
        result = self.run_on(self.speech.silence(2), "-l", "auto")
        self.assertEqual((result.returncode, result.stdout.strip()), (0, ""))

    def test_it_refuses_what_it_cannot_do(self):
        recording = self.speech.wav(SENTENCE)
        self.assertNotEqual(self.run_on(recording, "--no-such-option").returncode, 0)
        self.assertNotEqual(self.run_on(recording, "-l", "de").returncode, 0)
        self.assertNotEqual(self.run_on(recording, "-t", "many").returncode, 0)
        self.assertNotEqual(self.run_on(self.model).returncode, 0)
        self.assertNotEqual(self.run_on(recording + ".gone").returncode, 0)
        os.remove(self.model)
        self.assertNotEqual(self.run_on(recording).returncode, 0)
