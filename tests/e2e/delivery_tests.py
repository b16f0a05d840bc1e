"""Drafts that go to agents in terminals."""

import json
import subprocess

from desktop import AgentTerminal, Desktop
from program_test import SENTENCE, ProgramTest

ORCHESTRATOR = (
    "[ORCHESTRATOR CONTEXT] You are Claude Opus — the ORCHESTRATOR. You have subagents (Claude "
    "Sonnet 4.6+) that do ALL execution work. NEVER write code yourself. Delegate to CoderAgent, "
    "BuildAgent, TestEngineer, etc. Read → Plan → Delegate → Review. Save Opus tokens.\n")

# Of one to four bytes in UTF-8, a combining mark, a line with blanks at both ends, an empty line.
UNICODE_DRAFT = ("Fix the naïve parser: “quotes”, ¡señal!, Ω ≠ 漢字, e\N{COMBINING ACUTE ACCENT} 🦊\n"
                 "  indented, and a tab\there  \n"
                 "\n"
                 "$(echo `not run`) \\n 'single' \"double\" {brace} ~ ! # %d")


def skip_beside_other_agents(test):
    """Skips it where agents run in terminals that are not its own."""
    rows = subprocess.run(["ps", "-ax", "-o", "tty=,comm="], check=True, capture_output=True,
                          encoding="utf-8").stdout.split("\n")
    if any(tty != "?" and name.lstrip().lower().startswith(("claude", "opencode"))
           for tty, _, name in (row.partition(" ") for row in rows)):
        test.skipTest("the program would find the agents that run on this machine")


class DeliveryCase(ProgramTest):
    """Tests with terminals."""

    def setUp(self):
        super().setUp()
        skip_beside_other_agents(self)

    def open_terminal(self, **details):
        return self.enterContext(AgentTerminal(self.desktop, self.home, **details))

    def send_plain_drafts(self):
        """Settings without the text for orchestrators."""
        self.home.write_settings(json.dumps({"onboardingComplete": True, "agentsIncluded": False}))

    def assert_told(self, terminal, *texts):
        """Each of them once, and nothing else."""
        self.assertEqual(terminal.type_to_prompt("x"), "x")
        self.assertEqual(terminal.submitted, list(texts))


class DeliveryTests(DeliveryCase):
    def test_spoken_words_reach_the_agent(self):
        terminal = self.open_terminal()
        program = self.start_ready_program()
        program.record()
        self.say(SENTENCE)
        program.stop_recording()
        draft = program.draft()
        self.assertNotEqual(draft, "")

        program.click("Claude")

        program.wait_for_activity("Sent to Claude successfully")
        self.assert_told(terminal, ORCHESTRATOR + draft)
        self.assertEqual(program.draft(), "")
        [row] = self.home.history()
        self.assertEqual((row["text"], row["sent_to"], row["duration"]), (draft, "Claude", 0.0))

    def test_a_draft_arrives_letter_by_letter(self):
        self.send_plain_drafts()
        terminal = self.open_terminal()
        program = self.start_ready_program()
        program.paste_draft(UNICODE_DRAFT)

        program.click("Claude")

        program.wait_for_activity("Sent to Claude successfully")
        self.assert_told(terminal, UNICODE_DRAFT)
        self.assertEqual(self.home.history(), [])

    def test_an_agent_without_bracketed_paste_gets_a_line(self):
        self.send_plain_drafts()
        terminal = self.open_terminal(bracketed_paste=False)
        program = self.start_ready_program()
        program.paste_draft(SENTENCE)

        program.click("Claude")

        program.wait_for_activity("Sent to Claude successfully")
        self.assert_told(terminal, SENTENCE)

    def test_opencode_gets_its_own_message(self):
        self.send_plain_drafts()
        claude = self.open_terminal(project="alpha")
        opencode = self.open_terminal(agent="opencode", project="beta")
        program = self.start_ready_program()
        program.paste_draft(SENTENCE)

        program.click("OpenCode")

        program.wait_for_activity("Sent to OpenCode successfully")
        self.assert_told(opencode, SENTENCE)
        self.assert_told(claude)

    def test_without_a_draft_nothing_is_sent(self):
        self.send_plain_drafts()
        terminal = self.open_terminal()
        program = self.start_ready_program()

        program.click("Claude")
        program.click("OpenCode")  # There is no session that could take a message.
        program.paste_draft(SENTENCE)
        program.click("Claude")

        program.wait_for_activity("Sent to Claude successfully")
        self.assert_told(terminal, SENTENCE)
        self.assertEqual([line for line in program.activity() if line.startswith("Sending")],
                         ["Sending to Claude... (please run the unit tests and fix the fi...)"])

    def test_without_a_session_the_draft_stays(self):
        self.open_terminal(agent="opencode")
        program = self.start_ready_program()
        program.paste_draft(SENTENCE)

        program.click("Claude")

        message = "No Claude Code session found. Start Claude Code in a terminal first."
        program.wait_for_control(message)
        program.click("OK")
        program.wait_until_gone(message)
        self.assertEqual(program.draft(), SENTENCE)

    def test_the_user_picks_one_of_two_sessions(self):
        self.send_plain_drafts()
        first = self.open_terminal(project="alpha")
        second = self.open_terminal(project="beta")
        program = self.start_ready_program()
        program.paste_draft(SENTENCE)

        program.click("Claude")
        program.wait_for_control("alpha")
        program.click("beta")

        program.wait_for_activity("Sent to Claude successfully")
        self.assert_told(second, SENTENCE)
        self.assert_told(first)

    def pick_session_of_closed_terminal(self, program, terminals):
        """Picks the session of the first terminal; all of them are closed before."""
        program.paste_draft(SENTENCE)
        program.click("Claude")
        program.wait_for_control("beta")
        for terminal in terminals:
            terminal.kill()
        program.click("beta")
        program.wait_for_activity("Sent to Claude successfully")

    def test_a_message_for_a_closed_terminal_goes_to_another_terminal(self):
        self.send_plain_drafts()
        other = self.open_terminal(project="alpha")
        closed = self.open_terminal(project="beta")
        program = self.start_ready_program()

        self.pick_session_of_closed_terminal(program, [closed])

        self.assert_told(other, SENTENCE)

    def test_closing_all_terminals_costs_only_the_delivery(self):
        self.send_plain_drafts()
        terminals = [self.open_terminal(project="beta"), self.open_terminal(project="alpha")]
        program = self.start_ready_program()

        self.pick_session_of_closed_terminal(program, terminals)

        self.assertEqual(self.desktop.display.read_with_xclip("clipboard"), SENTENCE)

    def test_the_clipboard_keeps_the_message(self):
        self.send_plain_drafts()
        terminal = self.open_terminal()
        program = self.start_ready_program()
        program.paste_draft(UNICODE_DRAFT)

        program.click("Claude")
        program.wait_for_activity("Sent to Claude successfully")
        terminal.wait_for_submission()

        display = self.desktop.display
        for selection in ("clipboard", "primary"):
            for read in (display.read_with_xclip, display.read_with_xsel, display.read_with_xclip):
                self.assertEqual(read(selection), UNICODE_DRAFT)


class UnmanagedDeliveryTests(DeliveryCase):
    @staticmethod
    def make_desktop():
        return Desktop(has_window_manager=False)

    def test_a_draft_arrives_without_a_window_manager(self):
        self.send_plain_drafts()
        terminal = self.open_terminal()
        program = self.start_ready_program()
        program.paste_draft(SENTENCE)

        program.click("Claude")

        program.wait_for_activity("Sent to Claude successfully")
        self.assert_told(terminal, SENTENCE)
