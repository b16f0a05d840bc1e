"""Faults that only the real desktop has, in the middle of the work."""

import os
import signal
import time

from delivery_tests import DeliveryCase
from desktop import speaking_engine, wait_until
from desktop.mounts import seen_by, with_mounts
from faults_tests import SAID, BlindCase, FaultCase
from program_test import SENTENCE

TEN_MEGABYTES = 10 << 20


def crashing_engine():
    return "#!/bin/sh\nkill -SEGV $$\n"


def hanging_engine(command):
    """Does what a command does, and then nothing more for ever."""
    return "#!/bin/sh\n%s\nexec sleep infinity\n" % command


def engine_of_bytes(stream):
    """Speaks, and writes what is no UTF-8 to a stream."""
    return speaking_engine(SAID) + "printf '\\377\\376\\n' >&%d\n" % stream


class EngineFaultTests(FaultCase):
    def take(self, program):
        program.record()
        self.say("run the tests")
        program.click("Stop")

    def test_a_crashing_engine_costs_only_its_own_take(self):
        program = self.start_ready_program()
        self.home.install_engine(crashing_engine())

        self.take(program)
        program.wait_for_log("whisper-cpp failed: ")
        program.wait_until_idle()
        self.assertEqual(program.draft(), "")

        self.home.install_engine(speaking_engine(SAID))
        self.assert_usable(program)

    def assert_takes_go_on_beside(self, engine):
        """An engine that doesn't end holds up neither the draft nor the next take."""
        program = self.start_ready_program()
        self.home.install_engine(engine)
        self.take(program)
        program.wait_for_log("Running whisper-cpp")

        self.assert_draft_can_be_edited(program)
        self.home.install_engine(speaking_engine(SAID))
        program.begin_take(lambda: program.press("ctrl+r"))
        self.say("run the tests")
        program.press("ctrl+r")

        program.wait_until(lambda: program.draft() == "typed " + SAID, "the text of the next take")

    def test_a_hanging_engine_holds_up_nothing_else(self):
        self.assert_takes_go_on_beside(hanging_engine(":"))

    def test_an_engine_that_prints_ten_megabytes_holds_up_nothing_else(self):
        """It waits for a reader that comes when it has ended: as if it hung."""
        self.assert_takes_go_on_beside(
            "#!/bin/sh\nhead --bytes=%d /dev/zero | tr '\\0' x\n" % TEN_MEGABYTES)

    def test_an_engine_that_complains_in_ten_megabytes_holds_up_nothing_else(self):
        self.assert_takes_go_on_beside(
            "#!/bin/sh\nhead --bytes=%d /dev/zero | tr '\\0' x >&2\n" % TEN_MEGABYTES)

    def test_output_that_is_no_text_costs_only_its_own_take(self):
        program = self.start_ready_program()
        self.home.install_engine(engine_of_bytes(1))

        self.take(program)
        program.wait_for_log("Keep-warm started", 2)
        program.wait_until_idle()
        self.assertEqual(program.draft(), "")

        self.home.install_engine(speaking_engine(SAID))
        self.assert_usable(program)

    def test_complaints_that_are_no_text_cost_nothing(self):
        program = self.start_ready_program()
        self.home.install_engine(engine_of_bytes(2))

        self.assert_usable(program)


class ReliabilityCase(FaultCase):
    def assert_next_take_works(self, program):
        program.click("Clear")
        program.wait_until(lambda: program.draft() == "", "an empty draft")
        self.assert_usable(program)


class SoundFaultTests(ReliabilityCase):
    def suspend(self, *, during):
        self.desktop.sound.suspend_microphone(True)
        during()
        self.desktop.sound.suspend_microphone(False)

    def test_a_microphone_that_slept_while_warm_is_heard_again(self):
        program = self.start_ready_program()

        self.suspend(during=lambda: time.sleep(1))

        self.assert_usable(program)

    def test_a_microphone_that_sleeps_during_a_take_leaves_what_was_said(self):
        program = self.start_ready_program()
        program.record()
        self.say("run the tests")

        self.suspend(during=lambda: time.sleep(1))
        program.stop_recording()

        self.assertEqual(program.draft(), SAID)
        self.assert_next_take_works(program)

    def plug_in(self):
        self.desktop.sound.stop()
        self.desktop.sound.start()

    def test_a_microphone_that_is_unplugged_during_a_take_leaves_what_was_said(self):
        self.addCleanup(self.plug_in)
        program = self.start_ready_program()
        program.record()
        self.say("run the tests")

        self.desktop.sound.unplug_microphones()
        program.wait_for_log("Audio capture interrupted: ")
        program.stop_recording()

        self.assertEqual(program.draft(), SAID)

    def test_a_microphone_that_is_unplugged_while_warm_is_used_when_it_is_back(self):
        program = self.start_ready_program()

        self.desktop.sound.unplug_microphones()
        program.wait_for_log("Audio capture interrupted: ")
        self.plug_in()

        self.assert_usable(program)


class FullDiskTests(FaultCase):
    def start_on_full_disk(self, variable):
        """What `variable` names is on a disk that has filled up since the start."""
        path = self.home.environment[variable]
        program = self.start_apart(with_mounts("""
            mount -t tmpfs -o size=128k,mode=700,uid=%d tmpfs '%s'
            mkdir -m 700 '%s/quorvin'
            echo '{"onboardingComplete": true}' > '%s/quorvin/settings.json'
            """ % (os.getuid(), path, path, path)))
        program.wait_until_ready()
        with open(seen_by(program.pid, path + "/filler"), "wb", buffering=0) as filler:
            try:
                while True:
                    filler.write(bytes(4096))
            except OSError:
                pass  # It is full.
        return program

    def test_a_take_without_room_for_its_file_is_told_and_costs_no_draft(self):
        program = self.start_on_full_disk("TMPDIR")

        program.record()
        self.say("run the tests")
        program.stop_recording()

        self.assertIn("Failed to write WAV file: ", program.log)
        self.assert_draft_can_be_edited(program)
        self.assertEqual([name for name in os.listdir(
            seen_by(program.pid, self.home.environment["TMPDIR"])) if name.endswith(".wav")], [])

    def test_a_take_without_room_for_its_history_is_in_the_draft(self):
        program = self.start_on_full_disk("XDG_DATA_HOME")

        program.record()
        self.say("run the tests")
        program.stop_recording()

        self.assertEqual(program.draft(), SAID)
        self.assertNotIn("Added to history", program.log)
        self.assert_draft_can_be_edited(program)

    def test_settings_without_room_stay_as_they_were(self):
        program = self.start_on_full_disk("XDG_CONFIG_HOME")
        path = seen_by(program.pid, self.home.environment["XDG_CONFIG_HOME"]
                       + "/quorvin/settings.json")
        with open(path, encoding="utf-8") as file:
            before = file.read()

        program.press("ctrl+comma")
        program.wait_for_control("Append Mode")
        program.click_control("Append Mode")

        program.wait_for_log("Settings can't be written to ")
        with open(path, encoding="utf-8") as file:
            self.assertEqual(file.read(), before)
        self.desktop.display.press("Escape")
        self.assert_usable(program)


class SessionFaultTests(ReliabilityCase):
    def test_a_restarted_window_manager_changes_nothing(self):
        program = self.start_ready_program()

        self.desktop.display.restart_window_manager()

        self.assert_usable(program)

    def test_a_program_that_slept_with_the_machine_goes_on(self):
        """Both clocks have gone on when it looks again, and nobody has read its microphone."""
        program = self.start_ready_program()
        program.record()
        self.say("run the tests")

        os.kill(program.pid, signal.SIGSTOP)
        time.sleep(5)
        os.kill(program.pid, signal.SIGCONT)
        program.stop_recording()

        self.assertEqual(program.draft(), SAID)
        self.assert_next_take_works(program)


class LostBusTests(BlindCase):
    def test_a_session_bus_that_goes_takes_nothing_along(self):
        program = self.start_ready_program()

        self.desktop.bus.kill()

        self.assert_usable_blindly(program)
        self.assertEqual([row["text"] for row in self.home.history()], [SAID])


class KeySequenceTests(DeliveryCase):
    """Something happens in the 0.16 s between paste and Return; on a slow machine just after."""

    def setUp(self):
        super().setUp()
        self.send_plain_drafts()
        self.terminal = self.open_terminal(place="+640+500")
        self.program = self.start_ready_program()
        self.program.paste_draft(SENTENCE)

    def send_until_pasted(self):
        self.program.click("Claude")
        wait_until(lambda: self.terminal.pasted == [SENTENCE], "the pasted text")

    def test_a_terminal_that_dies_before_return_costs_only_the_delivery(self):
        self.send_until_pasted()
        self.terminal.kill()

        self.program.wait_for_activity("Sent to Claude successfully")
        self.assertIn(self.terminal.submitted, ([], [SENTENCE]))
        self.assertEqual(self.desktop.display.read_with_xclip("clipboard"), SENTENCE)
        self.program.click("Clear")  # Return went to whatever was in front then.
        self.program.paste_draft("the next one")

    def test_a_clipboard_that_is_taken_before_return_changes_no_text(self):
        self.send_until_pasted()
        self.desktop.display.copy("of another program")

        self.terminal.wait_for_submission()
        self.assertEqual(self.terminal.submitted, [SENTENCE])
        self.program.wait_for_activity("Sent to Claude successfully")
        self.assertEqual(self.desktop.display.read_with_xclip("clipboard"), "of another program")

    def test_the_end_of_the_program_before_return_leaves_the_text_at_the_prompt(self):
        self.send_until_pasted()

        self.program.end()

        prompt = self.terminal.type_to_prompt("x")
        self.assertIn((self.terminal.submitted, prompt),
                      [([], SENTENCE + "x"), ([SENTENCE], "x")])
