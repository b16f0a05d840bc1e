"""The demonstration that a machine without a display shows."""

import os
import shutil
import subprocess
import sys
import unittest

from desktop import word_errors
from program_test import SENTENCE

DEMO = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../scripts/demo/dictate.py")


class DemoTests(unittest.TestCase):
    def test_it_prints_the_spoken_sentence(self):
        output = os.path.join(os.environ["QUORVIN_E2E_OUTPUT"], "demo")
        shutil.rmtree(output, ignore_errors=True)

        command = [sys.executable, "-B", DEMO, os.environ["QUORVIN_EXECUTABLE"], output]
        result = subprocess.run(command, check=False, stdout=subprocess.PIPE, encoding="utf-8",
                                timeout=240)

        self.assertEqual(result.returncode, 0)
        self.assertLessEqual(word_errors(SENTENCE, result.stdout), 1, result.stdout)
        for picture in ("1-ready.png", "2-recording.png", "3-transcribed.png"):
            self.assertGreater(os.path.getsize(os.path.join(output, picture)), 0)
