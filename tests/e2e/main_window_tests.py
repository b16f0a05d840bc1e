"""The main window as a whole: from the voice to the draft, the images, the agents, the history."""

import os

from delivery_tests import DeliveryCase
from desktop import speaking_engine, word_errors
from program_test import SENTENCE


class MainWindowTests(DeliveryCase):
    def open_program_with(self, *terminals):
        self.send_plain_drafts()
        opened = [self.open_terminal(**terminal) for terminal in terminals]
        return self.start_ready_program(), opened

    def pick_images(self, program, *paths):
        """Attaches files by the dialog of the button."""
        windows = self.desktop.display.windows_of(program.pid)
        program.click("Attach")
        [dialog] = program.wait_until(
            lambda: set(self.desktop.display.windows_of(program.pid)) - set(windows), "the dialog")
        self.desktop.display.copy(" ".join('"%s"' % path for path in paths))
        self.desktop.display.focus(dialog)
        self.desktop.display.press("ctrl+v")
        self.desktop.display.press("Return")
        for path in paths:
            program.wait_for_control("Remove " + os.path.basename(path))

    def drag_into_draft(self, program, path):
        """Drags a file from another program onto the draft's editor."""
        x, y, width, height = program.extents("Draft")
        self.desktop.display.drag_from(self.desktop.display.offer_file(path),
                                       (x + width // 2, y + height // 2))

    def test_a_spoken_draft_is_edited_and_sent_with_two_images(self):
        program, [terminal] = self.open_program_with({})
        images = [self.home.write_temporary(name) for name in ("first shot.png", "second.png")]
        program.record()
        self.say(SENTENCE)
        program.stop_recording()
        spoken = program.draft()
        self.assertLessEqual(word_errors(SENTENCE, spoken), 1, spoken)

        program.click("Draft")
        program.press("ctrl+End")
        for key in ("space", "t", "o", "d", "a", "y"):
            program.press(key)
        program.wait_until(lambda: program.draft() == spoken + " today", "the edited draft")
        self.pick_images(program, *images)
        program.click("Claude")

        program.wait_for_activity("Sent to Claude successfully")
        terminal.wait_for_submission()
        [told] = terminal.submitted
        self.assertIn(spoken + " today", told)
        for image in images:
            self.assertIn(image, told)
        self.assertEqual(program.draft(), "")
        program.wait_until_gone("Remove second.png")
        self.assertEqual(self.sent(), [(spoken, "")])  # What was edited is nobody's.

    def sent(self):
        """The texts of the history and to whom they went."""
        return [(row["text"], row["sent_to"] or "") for row in self.home.history()]

    def test_a_text_of_the_history_is_loaded_and_sent_again(self):
        self.home.install_engine(speaking_engine("a take"))
        program, [terminal] = self.open_program_with({})
        program.record()
        self.say(SENTENCE)
        program.stop_recording()
        program.click("Clear")
        program.wait_until(lambda: program.draft() == "", "an empty draft")

        program.click("History")
        program.click("Load")
        program.wait_until(lambda: program.draft() == "a take", "the text of the history")
        program.click("Claude")

        program.wait_for_activity("Sent to Claude successfully")
        self.assert_told(terminal, "a take")
        self.assertEqual(self.sent(), [("a take", "Claude")])
        program.click("History")
        program.wait_for_control("→ Claude")

    def test_of_two_sessions_the_picked_one_gets_text_and_image(self):
        program, [first, second] = self.open_program_with({"project": "alpha"},
                                                          {"project": "beta"})
        image = self.home.write_temporary("shot.png")
        program.paste_draft(SENTENCE)
        self.drag_into_draft(program, image)
        program.wait_for_control("Remove shot.png")

        program.click("Claude")
        program.wait_for_control("alpha")
        program.click("beta")

        program.wait_for_activity("Sent to Claude successfully")
        second.wait_for_submission()
        [told] = second.submitted
        self.assertIn(SENTENCE, told)
        self.assertIn(image, told)
        self.assert_told(first)

    def test_a_dragged_file_that_is_no_image_leaves_the_draft_alone(self):
        program, _ = self.open_program_with()
        program.paste_draft(SENTENCE)

        self.drag_into_draft(program, self.home.write_temporary("notes.txt"))
        self.drag_into_draft(program, self.home.write_temporary("shot.png"))

        program.wait_for_control("Remove shot.png")
        self.assertEqual(program.draft(), SENTENCE)
        self.assertIn("1 image(s) attached (1/18 total)", program.activity())

    def test_every_control_is_reached_by_the_tab_key(self):
        program, _ = self.open_program_with()
        program.paste_draft(SENTENCE)
        wanted = {"Claude", "OpenCode", "Attach", "Selection", "Copy", "Clear", "History",
                  "Hide Draft", "Record", "Settings", "Compact mode", "Hide the activity log"}

        reached = set()
        for _ in range(30):
            program.press("Tab")
            reached.add(program.focused_control())
            if wanted <= reached:
                break

        self.assertEqual(wanted - reached, set())
