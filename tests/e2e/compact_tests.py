"""The panel that floats over the terminals and never takes the keyboard from them."""

import json
import os
import re
import subprocess

from desktop import AgentTerminal, speaking_engine, wait_until, word_errors
from desktop.program import RECORDING_STARTED
from program_test import SENTENCE, ProgramTest

TOGGLE = "ctrl+grave"
STOP = "alt+space"
SEND = "super+Right"
# Control+Backtick, Option+Space and Command+Right as xterm writes them.
TYPED_BY_HOT_KEYS = re.compile("\x00|\xa0|\x1b\\[C")


class CompactTests(ProgramTest):
    def setUp(self):
        super().setUp()
        # A plain text arrives as it is spoken.
        self.home.write_settings(json.dumps({"onboardingComplete": True, "agentsIncluded": False}))

    def start_in_compact_mode(self, draft="", toggle=TOGGLE):
        """The terminal has the keyboard, and the hot key is pressed in it."""
        self.terminal = self.enterContext(AgentTerminal(self.desktop, self.home))
        program = self.start_ready_program()
        self.main_window = program.wait_for_window()
        if draft:
            program.paste_draft(draft)
        self.focus_terminal()
        self.press(toggle)
        program.wait_until(program.panel, "the panel")
        program.wait_until(
            lambda: self.main_window not in self.desktop.display.windows_of(program.pid),
            "the end of the main window")
        self.assert_terminal_has_the_focus()
        return program

    def focus_terminal(self):
        self.desktop.display.focus(self.terminal.window)

    def press(self, keys):
        """As a user does, whose keys go to whatever has the focus."""
        self.desktop.display.press(keys)

    def record(self, program):
        program.begin_take(lambda: self.desktop.display.click(*program.strip()))
        self.assert_terminal_has_the_focus()

    def assert_terminal_has_the_focus(self):
        self.assertEqual(self.desktop.display.focused_window(), self.terminal.window)

    def leave_compact_mode(self, program):
        self.press(TOGGLE)
        program.wait_until(
            lambda: self.main_window in self.desktop.display.windows_of(program.pid),
            "the main window")

    def test_a_dictation_ends_in_the_terminal_that_never_lost_the_focus(self):
        program = self.start_in_compact_mode()

        self.record(program)
        self.say(SENTENCE)
        self.press(STOP)
        self.terminal.wait_for_submission()

        [text] = self.told()
        self.assertLessEqual(word_errors(SENTENCE, text), 1, text)
        self.assert_terminal_has_the_focus()
        self.assert_nothing_left_behind()

    def test_the_text_goes_where_the_take_began_when_the_focus_has_moved_on(self):
        program = self.start_in_compact_mode()
        other = self.enterContext(AgentTerminal(self.desktop, self.home, agent="opencode",
                                                place="+640+400"))
        self.focus_terminal()
        self.record(program)
        self.say(SENTENCE)
        self.desktop.display.focus(other.window)
        self.press(STOP)
        self.terminal.wait_for_submission()

        [text] = self.told()
        self.assertEqual(other.submitted, [])
        self.assertLessEqual(word_errors(SENTENCE, text), 1, text)

    def test_escape_drops_the_take_and_still_reaches_the_terminal(self):
        program = self.start_in_compact_mode()

        self.record(program)
        self.say("run the tests")
        self.press("Escape")
        program.wait_for_log("Keep-warm started", 2)

        self.assertNotIn("Running whisper-cpp", program.log)
        self.assertEqual(self.terminal.submitted, [])
        self.assert_terminal_has_the_focus()

    def told(self):
        """The texts that the agent was told, without what the hot keys have typed before them.

        Nobody takes these keys away from the terminal.
        """
        return [TYPED_BY_HOT_KEYS.sub("", text) for text in self.terminal.submitted]

    def send(self):
        """Sends the draft by its key and returns everything that the agent was told."""
        before = len(self.terminal.submitted)
        self.press(SEND)
        wait_until(lambda: len(self.terminal.submitted) > before, "the delivery")
        return self.told()

    def test_the_draft_is_sent_by_its_key(self):
        self.start_in_compact_mode("a draft from before")

        self.assertEqual(self.send(), ["a draft from before"])

    def test_the_last_phrase_is_deleted(self):
        program = self.start_in_compact_mode("First phrase. Second phrase.")

        program.click_control("Delete last phrase")
        self.assert_terminal_has_the_focus()

        self.assertEqual(self.send(), ["First phrase."])

    def test_the_previous_phrase_comes_back_from_the_history(self):
        self.home.install_engine(speaking_engine("an earlier take"))
        program = self.start_in_compact_mode()
        self.record(program)
        self.say("run the tests")
        self.press(STOP)
        self.terminal.wait_for_submission()

        program.click_control("Previous phrase")

        self.assertEqual(self.send(), ["an earlier take", "an earlier take"])

    def drop(self, program, path):
        """Drags a file from another program onto the strip."""
        self.desktop.display.drag_from(self.desktop.display.offer_file(path), program.strip())
        program.wait_for_control("Remove " + os.path.basename(path))
        self.focus_terminal()

    def test_a_dropped_image_is_attached_and_sent_with_the_draft(self):
        program = self.start_in_compact_mode("see here")
        image = self.home.write_temporary("shot.png")

        self.drop(program, image)

        [text] = self.send()
        self.assertIn("see here", text)
        self.assertIn(image, text)

    def test_a_click_on_its_dot_removes_an_image_and_records_nothing(self):
        program = self.start_in_compact_mode("see here")
        self.drop(program, self.home.write_temporary("shot.png"))

        left, top = program.panel()
        self.desktop.display.click(left + 345, top + 35)
        program.wait_until_gone("Remove shot.png")

        self.assertNotIn(RECORDING_STARTED, program.log)
        self.assertEqual(self.send(), ["see here"])

    def test_the_panel_comes_back_where_it_was_dragged(self):
        program = self.start_in_compact_mode()
        place = program.panel()
        x, y = program.strip()

        self.desktop.display.drag((x, y), (x - 120, y - 300))
        program.wait_until(lambda: program.panel() != place, "the move")
        moved = program.panel()
        self.assert_terminal_has_the_focus()
        self.assertNotIn(RECORDING_STARTED, program.log)
        self.leave_compact_mode(program)
        self.focus_terminal()
        self.press(TOGGLE)

        program.wait_until(lambda: program.panel() == moved, "the panel in its place")

    def test_a_second_start_leaves_the_panel_alone(self):
        program = self.start_in_compact_mode()

        second = self.start_program(log="second.log")

        self.assertEqual(second.wait_for_end(), 0)
        self.assertNotIn(self.main_window, self.desktop.display.windows_of(program.pid))
        self.assert_terminal_has_the_focus()

    def test_the_toggle_works_with_another_layout_and_with_locks(self):
        def set_layout(name):
            subprocess.run(["setxkbmap", name], env=self.desktop.environment, check=True)

        set_layout("de")
        self.addCleanup(set_layout, "us")
        for lock in ("Num_Lock", "Caps_Lock"):
            self.press(lock)
            self.addCleanup(self.press, lock)

        program = self.start_in_compact_mode(toggle="ctrl+49")  # the key left of 1

        self.record(program)
        self.press("Escape")
        program.wait_for_log("Keep-warm started", 2)

    def test_the_toggle_with_a_further_modifier_does_nothing_elsewhere(self):
        program = self.start_in_compact_mode()

        self.press("ctrl+shift+grave")
        self.press("ctrl+alt+grave")
        self.record(program)  # comes later, and is seen

        self.assertIsNotNone(program.panel())
        self.press("Escape")
