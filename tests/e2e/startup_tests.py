"""What the program finds when it starts."""

import json
import os
import stat

from desktop import speaking_engine, waiting_engine
from program_test import ProgramTest


class StartupTests(ProgramTest):
    def test_a_first_start_needs_no_files(self):
        os.remove(self.home.settings_path)
        program = self.start_program()

        program.wait_for_window()
        program.wait_for_log("History database ready")

    def language_of_a_take(self, is_first_start=False):
        self.home.install_engine(speaking_engine("a take"))
        program = self.start_program()
        program.wait_until_ready()
        if is_first_start:
            program.click("Get Started")
        program.record()
        self.say("run the tests")
        program.stop_recording()
        [row] = self.home.history()
        return row["language"]

    def test_settings_are_read(self):
        self.home.write_settings(json.dumps({"onboardingComplete": True, "language": "de"}))

        self.assertEqual(self.language_of_a_take(), "de")

    def test_damaged_settings_are_set_aside_for_the_defaults(self):
        damaged = '{"onboardingComplete": true, "language": "de"'
        self.home.write_settings(damaged)

        self.assertEqual(self.language_of_a_take(is_first_start=True), "en")
        self.assertIn(damaged, self.home.files_beside_settings().values())

    def test_recordings_of_a_crashed_run_are_removed(self):
        self.home.write_temporary("quorvin_7C9E6679-7425-40DE-944B-E07FC1F90AE7.wav")
        foreign = self.home.write_temporary("interview.wav")
        program = self.start_ready_program()

        self.assertEqual(self.home.temporary_recordings(), [foreign])
        self.assertIn("Cleaned up 1 orphaned WAV file(s) from /tmp", program.activity())

    def test_the_recording_of_a_killed_run_is_gone_after_the_next_start(self):
        self.home.install_engine(waiting_engine())
        program = self.start_ready_program()
        program.record()
        self.say("run the tests")
        program.click("Stop")
        [recording] = program.wait_until(self.home.temporary_recordings, "the file for the engine")
        self.assertEqual(stat.S_IMODE(os.stat(recording).st_mode), 0o600)
        program.kill()
        self.assertEqual(self.home.temporary_recordings(), [recording])

        program = self.start_program(log="second.log")

        program.wait_for_activity("Cleaned up 1 orphaned WAV file(s) from /tmp")
        self.assert_nothing_left_behind()

    def test_an_unusable_data_directory_costs_only_the_history(self):
        self.home.block_data_directory()
        program = self.start_program()

        program.wait_until_ready()
        program.wait_until(lambda: any(line.startswith("History service failed: ")
                                       for line in program.activity()), "the report in the feed")
