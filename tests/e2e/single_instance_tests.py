"""One program for each user."""

import os

from program_test import ProgramTest


class SingleInstanceTests(ProgramTest):
    def test_a_second_start_raises_the_window_of_the_first(self):
        first = self.start_program()
        window = first.wait_for_window()
        other = self.desktop.display.open_window("+0+0")
        self.desktop.display.focus(other)

        second = self.start_program(log="second.log")

        self.assertEqual(second.wait_for_end(), 0)
        first.wait_until(lambda: self.desktop.display.focused_window() == window,
                         "the focus of the first window")

    def test_a_killed_instance_does_not_stand_in_the_way(self):
        first = self.start_program()
        first.wait_for_window()
        first.kill()

        self.start_program(log="second.log").wait_for_window()

    def test_another_user_has_a_program_of_its_own(self):
        first = self.start_program()
        first.wait_for_window()
        runtime = os.path.join(self.home.directory, "run")
        os.mkdir(runtime, 0o700)

        other = self.start_program(log="other.log", XDG_RUNTIME_DIR=runtime)

        self.assertNotEqual(other.wait_for_window(), first.wait_for_window())
