"""Every row of the settings, used by mouse and keyboard: it changes what it says, and stays so."""

import json
import os

from gi.repository import GLib

from desktop import accessibility
from program_test import ProgramTest

TOGGLES = {
    "Translate to English": ("translateToEnglish", False),
    "Auto-Stop on Silence": ("vadAutoStop", True),
    "Append Mode": ("appendMode", True),
    "Orchestrator Prefix": ("agentsIncluded", True),
    "Always on Top": ("alwaysOnTop", True),
    "UI Sounds": ("soundsEnabled", True),
}
# Themes and their grounds.
GROUNDS = {"Latte": "#EFF1F5", "Mocha": "#1E1E2E", "Synthwave": "#0D0015", "Neon": "#0A0A0F"}


class SettingsTests(ProgramTest):
    def windows(self, program):
        return self.desktop.display.windows_of(program.pid)

    def stored(self, key):
        with open(self.home.settings_path, encoding="utf-8") as settings:
            return json.load(settings).get(key)

    def wait_until_stored(self, program, key, value):
        program.wait_until(lambda: self.stored(key) == value, "%s to be %r" % (key, value))

    def open_settings(self, program, section):
        main_window = program.wait_for_window()
        program.press("ctrl+comma")
        [settings] = program.wait_until(lambda: set(self.windows(program)) - {main_window},
                                        "the settings")
        program.wait_until(lambda: self.desktop.display.focused_window() == settings,
                           "the settings in front")
        if section != "General":
            program.click_control(section)

    def start_in(self, section):
        program = self.start_ready_program()
        self.open_settings(program, section)
        return program

    def restart_in(self, program, section):
        program.end()
        return self.start_in(section)

    def choose(self, program, picker, entry):
        program.click_control(picker)
        program.click_control(entry)

    def press(self, program, control, key):
        """Gives the control the keyboard by a click and presses a key."""
        program.click_control(control)
        self.desktop.display.press(key)

    def texts(self, program):
        """The names of all that can be seen in the program."""

        def attempt():
            try:
                root = accessibility.application(self.desktop.bus.accessibility, program.pid)
                return [it.name for it in root.descendants() if it.is_visible]
            except (AttributeError, GLib.Error):
                return None

        return program.wait_until(attempt, "the controls")

    def wait_for_texts(self, program, *texts):
        program.wait_until(lambda: set(texts) <= set(self.texts(program)),
                           "the texts %r" % (texts,))

    def test_the_toggles_of_the_first_section_are_kept(self):
        program = self.start_in("General")
        for label, (key, was_on) in TOGGLES.items():
            program.click_control(label)
            self.wait_until_stored(program, key, not was_on)

        program = self.restart_in(program, "General")

        for label, (key, was_on) in TOGGLES.items():
            program.click_control(label)
            self.wait_until_stored(program, key, was_on)

    def test_language_model_and_timeout_are_kept(self):
        program = self.start_in("General")
        self.choose(program, "Language", "Ukrainian")
        self.wait_until_stored(program, "language", "uk")
        self.press(program, "Silence Timeout", "End")
        self.wait_until_stored(program, "silenceTimeout", 30)
        large = os.path.join(os.path.dirname(self.home.model), "ggml-large-v3.bin")
        os.symlink(self.home.model, large)
        self.choose(program, "Whisper Model", "Large  (best)")
        self.wait_until_stored(program, "engineTier", "large")

        program = self.restart_in(program, "General")

        self.press(program, "Language", "Escape")  # shows its entries and leaves them
        self.desktop.display.press("Down")
        self.wait_until_stored(program, "language", "ru")
        self.press(program, "Silence Timeout", "Home")
        self.wait_until_stored(program, "silenceTimeout", 3)
        self.choose(program, "Whisper Model", "Small  (fast)")
        self.wait_until_stored(program, "engineTier", "small")
        # It is told where the user is: in the main window.
        program.wait_for_control("Model not found: ggml-small.bin")

    def test_the_sound_settings_are_kept(self):
        program = self.start_in("Audio")
        # The desktop has one microphone; its name is that of the sound server's source.
        program.click_control("Microphone")
        self.desktop.display.press("Down")
        self.desktop.display.press("Return")
        program.wait_until(lambda: self.stored("selectedDevice") not in (None, "default"),
                           "another microphone")
        device = self.stored("selectedDevice")
        program.click_control("Refresh device list")
        self.press(program, "Input Gain", "End")
        self.wait_until_stored(program, "inputGainDB", 12)
        self.press(program, "Noise Gate", "End")
        self.wait_until_stored(program, "noiseGatePercent", 5)
        self.wait_for_texts(program, "+12 dB", "5%")

        program = self.restart_in(program, "Audio")

        self.assertEqual(self.stored("selectedDevice"), device)
        self.wait_for_texts(program, "+12 dB", "5%")

    def test_theme_animation_and_opacity_are_kept(self):
        program = self.start_in("Appearance")
        program.click_control("Forest")
        self.wait_until_stored(program, "selectedTheme", "forest")
        program.click_control("Comet")
        self.wait_until_stored(program, "animationStyle", "comet")
        self.press(program, "Window Opacity", "Home")
        self.wait_until_stored(program, "windowOpacity", 0.3)

        program = self.restart_in(program, "Appearance")

        self.wait_for_texts(program, "30%")
        self.assertEqual(self.stored("selectedTheme"), "forest")
        self.press(program, "Window Opacity", "End")
        self.wait_until_stored(program, "windowOpacity", 1)

    def test_the_other_sections_tell_what_they_know(self):
        program = self.start_in("Agents")
        self.wait_for_texts(program, "Claude Code sessions", "Claude Opus", "18")
        program.click_control("Refresh")
        program.click_control("Shortcuts")
        self.wait_for_texts(program, "Toggle Compact Mode", "Ctrl + `", "⌘ →")
        program.click_control("Permissions")
        program.wait_until(lambda: self.texts(program).count("Granted") == 3, "all permissions")
        program.click_control("Updates")
        self.wait_for_texts(program, "Up to date", "Profiled via os_signpost (view in Instruments)",
                            "Geist typeface across the whole app")
        program.click_control("About")
        self.wait_for_texts(program, "Platform", "Loaded", "Run Test")

    def test_the_diagnostic_writes_into_the_activity_log(self):
        program = self.start_in("About")

        program.click_control("Run Test")

        program.wait_for_activity("=== Send Diagnostic ===")

    def test_the_wizard_is_run_again(self):
        program = self.start_in("Permissions")

        program.click_control("Open Wizard")

        program.wait_until(lambda: not self.stored("onboardingComplete"), "a user without wizard")
        program.wait_for_control("Get Started")

    def test_they_close_again_and_again_while_a_theme_fades_in(self):
        program = self.start_ready_program()
        main_window = program.wait_for_window()
        left, top, _, height = self.desktop.display.geometry(main_window)
        for theme, ground in [*GROUNDS.items()] * 6:
            self.open_settings(program, "Appearance")
            program.click_control(theme)
            self.desktop.display.press("Escape")
            program.wait_until(lambda: self.windows(program) == [main_window],
                               "the end of the settings")
            program.wait_until(
                lambda: self.desktop.display.column(left + 10, top, height).count(ground)
                > height // 2, "the main window in %s" % theme)
        program.end()  # or it has crashed

    def test_the_arrow_keys_walk_through_the_sections(self):
        program = self.start_in("General")
        program.click_control("General")
        self.desktop.display.press("Down")
        self.wait_for_texts(program, "Microphone, levels and noise settings")
        self.desktop.display.press("Down")
        self.wait_for_texts(program, "Themes, animations and window opacity")
