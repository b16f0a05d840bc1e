"""The demonstration that a machine without a display shows."""

import os
import shutil
import subprocess
import sys
import unittest

from delivery_tests import skip_beside_other_agents
from desktop import word_errors
from program_test import SENTENCE

DEMO = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../scripts/demo/dictate.py")


class DemoTests(unittest.TestCase):
    def test_it_shows_the_way_of_a_sentence(self):
        skip_beside_other_agents(self)
        output = os.path.join(os.environ["QUORVIN_E2E_OUTPUT"], "demo")
        shutil.rmtree(output, ignore_errors=True)

        command = [sys.executable, "-B", DEMO, os.environ["QUORVIN_EXECUTABLE"], output]
        result = subprocess.run(command, check=False, capture_output=True, encoding="utf-8",
                                timeout=240)

        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertLessEqual(word_errors(SENTENCE, result.stdout), 1, result.stdout)
        told = result.stderr.splitlines()[-2:]
        self.assertTrue(told[0].startswith("[ORCHESTRATOR CONTEXT]"), told)
        self.assertEqual(told[1], result.stdout.rstrip("\n"))
        for picture in ("1-ready.png", "2-recording.png", "3-transcribed.png", "4-delivered.png"):
            self.assertGreater(os.path.getsize(os.path.join(output, picture)), 0)
