"""One program for each user."""

import tempfile

from desktop import Home, wait_until
from program_test import ProgramTest


class SingleInstanceTests(ProgramTest):
    def start_again(self, log="second.log", **variables):
        """Starts it while it runs already: this one ends at once and has no services of its own."""
        later = self.start_program(log=log, **variables)
        self.assertEqual(later.wait_for_end(), 0, later.log)
        self.assertNotIn("com.quorvin.WhisperService", later.log)
        self.assertNotIn("com.quorvin.AudioService", later.log)

    def wait_until_in_front(self, program, window):
        display = self.desktop.display
        program.wait_until(lambda: display.front_window() == window, "the window in front")
        program.wait_until(lambda: display.focused_window() == window, "the focus of the window")

    def test_a_second_start_raises_a_covered_window(self):
        first = self.start_program()
        window = first.wait_for_window()
        self.desktop.display.cover(window)

        self.start_again()

        self.wait_until_in_front(first, window)

    def test_a_second_start_brings_back_a_minimised_window(self):
        first = self.start_program()
        window = first.wait_for_window()
        self.wait_until_in_front(first, window)
        self.desktop.display.minimise(window)
        self.assertEqual(self.desktop.display.windows_of(first.pid), [])

        self.start_again()

        self.assertEqual(first.wait_for_window(), window)
        self.wait_until_in_front(first, window)

    def test_a_killed_instance_does_not_stand_in_the_way(self):
        first = self.start_ready_program()
        first.kill()

        second = self.start_program(log="second.log")
        second.wait_until_ready()

        window = second.wait_for_window()
        self.desktop.display.cover(window)
        self.start_again(log="third.log")
        self.wait_until_in_front(second, window)

    def test_of_two_starts_at_the_same_time_one_stays(self):
        programs = [self.start_program(log="%s.log" % name) for name in ("first", "second")]

        wait_until(lambda: not all(program.is_running() for program in programs),
                   "the end of one of the two")

        programs.sort(key=lambda program: program.is_running())
        self.assertEqual(programs[0].wait_for_end(), 0, programs[0].log)
        programs[1].wait_until_ready()

    def test_another_user_has_a_program_of_its_own(self):
        other_user = Home(tempfile.mkdtemp(dir=self.desktop.directory)).environment
        first = self.start_program()
        window = first.wait_for_window()

        other = self.start_program(log="other.log", **other_user)

        other_window = other.wait_for_window()
        self.assertNotEqual(other_window, window)
        self.desktop.display.cover(window)
        self.start_again(log="other-second.log", **other_user)
        self.wait_until_in_front(other, other_window)
        self.start_again()
        self.wait_until_in_front(first, window)
