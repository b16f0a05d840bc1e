"""The wizard that a first start shows, and what ends it."""

import json
import os
import time

from desktop import Desktop
from program_test import SENTENCE, ProgramTest

FIRST_STEP = "Microphone Access"
SECOND_STEP = "Accessibility Access"
END = "All Set!"
WAITING = "Waiting for permission..."
MAIN_VIEW = "Record"


class OnboardingCase(ProgramTest):
    def setUp(self):
        super().setUp()
        if not self.desktop.sound.is_running():
            self.desktop.sound.start()
        os.remove(self.home.settings_path)

    def stored(self):
        with open(self.home.settings_path, encoding="utf-8") as settings:
            return json.load(settings)

    def assert_over(self, program):
        """The main view is there, and a second start shows it at once."""
        program.wait_for_control(MAIN_VIEW)
        self.assertTrue(self.stored()["onboardingComplete"])
        program.end()
        again = self.start_program(log="again.log")
        again.wait_for_control(MAIN_VIEW)
        for part in (FIRST_STEP, SECOND_STEP, END, "Skip for now", "Get Started"):
            again.wait_until_gone(part)


class OnboardingTests(OnboardingCase):
    def test_a_first_start_leads_through_what_is_granted_to_the_end(self):
        program = self.start_program()

        program.wait_for_control(END)
        self.assertFalse(self.stored().get("onboardingComplete", False))
        program.click("Get Started")

        self.assert_over(program)

    def test_without_a_sound_server_it_waits_and_goes_on_when_one_comes(self):
        self.desktop.sound.kill()
        program = self.start_program()
        program.wait_for_control(FIRST_STEP)
        program.wait_for_control(WAITING)
        program.wait_for_control("Start PipeWire or PulseAudio, then press Grant Access.")
        program.click("Grant Access")
        program.wait_for_control(FIRST_STEP)

        self.desktop.sound.start()
        program.click("Grant Access")

        program.wait_for_control(END)
        program.click("Get Started")
        program.wait_for_control(MAIN_VIEW)
        program.record()
        self.say(SENTENCE)
        program.stop_recording()
        self.assertNotEqual(program.draft(), "")

    def test_skipping_ends_it_whatever_is_missing(self):
        self.desktop.sound.kill()
        program = self.start_program()
        program.wait_for_control(FIRST_STEP)

        program.click("Skip for now")

        self.assert_over(program)

    def test_compact_mode_covers_it_and_brings_it_back(self):
        self.desktop.sound.kill()
        program = self.start_program()
        program.wait_for_control(FIRST_STEP)
        window = program.wait_for_window()
        program.press("ctrl+grave")
        program.wait_until(
            lambda: self.desktop.display.windows_of(program.pid) not in ([], [window]),
            "the panel")
        program.wait_until_gone(FIRST_STEP)
        time.sleep(1)  # For a while after the switch, windows that come back are hidden.

        self.desktop.display.press("ctrl+grave")

        program.wait_for_control(FIRST_STEP)


class InjectionLessTests(OnboardingCase):
    @staticmethod
    def make_desktop():
        return Desktop(lets_inject_keys=False)

    def test_where_no_keys_can_be_posted_it_waits_and_warns(self):
        program = self.start_program()

        program.wait_for_control(SECOND_STEP)
        program.wait_for_control(
            "Log in to an X11 session; its display needs the XTEST extension.")
        program.wait_for_control("I've granted it — Continue")
        program.click("I've granted it — Continue")

        program.wait_for_control(END)
        program.click("Get Started")
        self.assert_over(program)
