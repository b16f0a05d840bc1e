"""What the desktop sees of the program: its windows, and that it goes on without them."""

from desktop import StatusNotifierWatcher
from program_test import ProgramTest


class ShellTests(ProgramTest):
    def windows(self, program):
        return self.desktop.display.windows_of(program.pid)

    def test_closing_the_window_leaves_the_program_and_its_hot_keys(self):
        program = self.start_ready_program()
        window = program.wait_for_window()
        program.press("alt+F4")
        program.wait_until(lambda: not self.windows(program), "the end of the window")

        self.desktop.display.press("ctrl+grave")
        [panel] = program.wait_until(lambda: self.windows(program), "the panel")

        self.assertNotEqual(panel, window)

    def test_a_closed_window_comes_back_with_a_second_start(self):
        program = self.start_ready_program()
        program.press("alt+F4")
        program.wait_until(lambda: not self.windows(program), "the end of the window")

        self.assertEqual(self.start_program(log="second.log").wait_for_end(), 0)

        [window] = program.wait_until(lambda: self.windows(program), "the window again")
        program.wait_until(lambda: self.desktop.display.focused_window() == window, "its focus")

    def open_settings(self, program):
        """Returns the number of the main window and of theirs."""
        main_window = program.wait_for_window()
        program.press("ctrl+comma")
        program.wait_until(lambda: len(self.windows(program)) == 2, "the settings")
        [settings] = set(self.windows(program)) - {main_window}
        return main_window, settings

    def test_the_settings_have_room_for_their_sections(self):
        program = self.start_ready_program()

        _, settings = self.open_settings(program)

        _, _, width, height = self.desktop.display.geometry(settings)
        self.assertGreaterEqual(width, 780)
        self.assertGreaterEqual(height, 560)

    def test_the_settings_open_once(self):
        program = self.start_ready_program()
        main_window, settings = self.open_settings(program)

        self.desktop.display.focus(main_window)
        self.desktop.display.press("ctrl+comma")

        program.wait_until(lambda: self.desktop.display.focused_window() == settings,
                           "the settings in front")
        self.assertEqual(len(self.windows(program)), 2)

    def test_the_window_carries_the_icon_of_the_program(self):
        program = self.start_program()
        icon = self.desktop.display.window_property(program.wait_for_window(), "_NET_WM_ICON")
        self.assertIn("Icon (", icon)

    def start_with_status_item(self):
        tray = self.enterContext(StatusNotifierWatcher(self.desktop.bus.address))
        program = self.start_ready_program()
        program.wait_until(lambda: tray.item, "the status item")
        return program, tray

    def test_the_status_item_has_its_menu(self):
        program, tray = self.start_with_status_item()
        main_window = program.wait_for_window()
        self.assertEqual(list(tray.menu()),
                         ["Show Quorvin", "Settings…", "Compact Mode", "Quit Quorvin"])

        tray.choose("Settings…")
        program.wait_until(lambda: len(self.windows(program)) == 2, "the settings")
        tray.choose("Compact Mode")
        program.wait_until(lambda: len(self.windows(program)) == 1, "the panel alone")
        # Again and again, as the switch to compact mode hides all windows once more, 250 ms later.
        program.wait_until(lambda: main_window in self.windows(program)
                           or tray.choose("Show Quorvin"), "the main window")
        tray.choose("Quit Quorvin")
        self.assertEqual(program.wait_for_end(), 0)

    def test_the_status_icon_tells_of_a_take(self):
        program, tray = self.start_with_status_item()
        idle = tray.icon()

        program.record()
        program.wait_until(lambda: tray.icon() != idle, "another icon")
        program.press("Escape")
        program.wait_until(lambda: tray.icon() == idle, "the icon of rest")
