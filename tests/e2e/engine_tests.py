"""Recognisers that are missing, fail, or invent text."""

from desktop import failing_engine, speaking_engine
from program_test import ProgramTest

INSTALL_HINT = "[No whisper-cpp] Install: brew install whisper-cpp"


class EngineTests(ProgramTest):
    def take(self, program):
        program.record()
        self.say("run the tests")
        program.stop_recording()

    def test_a_failing_engine_costs_only_its_own_take(self):
        self.home.install_engine(speaking_engine("first take"))
        program = self.start_ready_program()

        self.take(program)
        self.assertEqual(program.draft(), "first take")

        self.home.install_engine(failing_engine("out of memory"))
        self.take(program)
        program.wait_for_log("whisper-cpp failed: Whisper process failed: "
                             "whisper-cpp exited with status 3: out of memory")
        self.assertEqual(program.draft(), "first take")

        self.home.install_engine(speaking_engine("third take"))
        self.take(program)
        self.assertEqual(program.draft(), "first take third take")
        self.assertEqual([row["text"] for row in self.home.history()],
                         ["first take", "third take"])
        self.assert_nothing_left_behind()

    def test_an_invented_text_is_dropped(self):
        self.home.install_engine(speaking_engine("Thanks for watching"))
        program = self.start_ready_program()

        self.take(program)

        program.wait_for_log('Filtered hallucination: "Thanks for watching"')
        self.assertEqual(program.draft(), "")
        self.assertEqual(self.home.history(), [])

    def test_a_missing_engine_tells_how_to_install_one(self):
        self.home.remove_engine()
        program = self.start_ready_program()

        self.take(program)

        self.assertEqual(program.draft(), INSTALL_HINT)
        self.assertEqual([row["text"] for row in self.home.history()], [INSTALL_HINT])
