"""The question for a newer build, and everything that can come back."""

import json
import os
import socket
import time
import urllib.parse
from contextlib import contextmanager, suppress

from program_test import ProgramTest
from web_server import WebServer

MANIFEST = json.dumps({"version": "v9.9.9", "dmg": "https://updates.example/Quorvin.tar.gz"})
ANNOUNCEMENT = "Update available: v9.9.9"


class Store(WebServer):
    """Gives one answer, with `status`, to every question.

    `location` is where a redirection leads.
    """

    def __init__(self, status, body, location=None):
        super().__init__()
        self.status, self.body, self.location = status, body, location
        self.requests = []

    def answer(self, request):
        self.requests.append((request.path, dict(request.headers)))
        request.send_response(self.status)
        request.send_header("Content-Length", str(len(self.body)))
        if self.location:
            request.send_header("Location", self.location)
        request.end_headers()
        with suppress(ConnectionError):  # Nobody has to wait for the end of it.
            request.wfile.write(self.body)


@contextmanager
def silent_server():
    """Takes connections and never says a word."""
    with socket.create_server(("127.0.0.1", 0)) as listener:
        listener.settimeout(20)
        yield listener


class UpdateTests(ProgramTest):
    def start_with_updates_from(self, endpoint):
        return self.start_program("QUORVIN_UPDATES_EXECUTABLE",
                                  QUORVIN_TEST_UPDATE_ENDPOINT=endpoint)

    def test_a_newer_build_is_announced(self):
        with Store(200, MANIFEST.encode()) as store:
            program = self.start_with_updates_from(store.endpoint)
            program.wait_for_activity(ANNOUNCEMENT)

        [(path, headers)] = store.requests
        address = urllib.parse.urlsplit(path)
        self.assertEqual(address.path, "/builds/latest.json")
        [asked_at] = urllib.parse.parse_qs(address.query, strict_parsing=True)["ts"]
        self.assertAlmostEqual(int(asked_at), time.time(), delta=120)
        self.assertEqual(headers["Accept"], "application/json")
        self.assertEqual(headers["Cache-Control"], "no-cache")

    def test_the_settings_ask_again(self):
        with Store(200, b'{"version": "0.0.1"}') as store:
            program = self.start_with_updates_from(store.endpoint)
            program.press("ctrl+comma")
            program.click_control("Updates")
            program.wait_for_control("Up to date")
            program.wait_until(lambda: store.requests, "the question of the start")
            store.body = MANIFEST.encode()

            program.click_control("Check Now")

            program.wait_until(lambda: len(store.requests) == 2, "another question")
            program.wait_for_control("9.9.9 available")

    def test_the_status_of_the_answer_is_not_looked_at(self):
        with Store(404, MANIFEST.encode()) as store:
            self.start_with_updates_from(store.endpoint).wait_for_activity(ANNOUNCEMENT)

    def test_a_redirection_to_a_manifest_is_followed(self):
        with Store(200, MANIFEST.encode()) as other, \
                Store(302, b"moved", other.endpoint + "/latest.json") as store:
            self.start_with_updates_from(store.endpoint).wait_for_activity(ANNOUNCEMENT)

    def assert_nothing_is_said(self, program):
        """It works as ever and doesn't mention updates."""
        program.wait_until_ready()
        program.wait_for_activity("Whisper model loaded and ready")
        program.record()
        program.press("Escape")
        program.wait_until_idle()
        self.assertFalse([line for line in program.activity() if "pdate" in line])

    def assert_answer_changes_nothing(self, status, body, location=None):
        with Store(status, body, location) as store:
            program = self.start_with_updates_from(store.endpoint)
            program.wait_until(lambda: store.requests, "the question")
            self.assert_nothing_is_said(program)

    def test_an_older_build_is_no_news(self):
        self.assert_answer_changes_nothing(200, b'{"version": "0.0.1"}')

    def test_garbage_changes_nothing(self):
        self.assert_answer_changes_nothing(200, bytes(range(256)) * 40)

    def test_an_error_page_changes_nothing(self):
        self.assert_answer_changes_nothing(404, b"<html><body>Not Found</body></html>")

    def test_a_manifest_without_a_version_changes_nothing(self):
        self.assert_answer_changes_nothing(200, b'{"dmg": "https://updates.example/Quorvin"}')

    def test_a_redirection_that_leads_in_a_circle_changes_nothing(self):
        self.assert_answer_changes_nothing(302, MANIFEST.encode(), "/builds/latest.json")

    def test_a_redirection_to_a_file_changes_nothing(self):
        manifest = os.path.join(self.home.directory, "latest.json")
        with open(manifest, "w", encoding="utf-8") as file:
            file.write(MANIFEST)
        self.assert_answer_changes_nothing(302, b"moved", "file://" + manifest)

    def test_a_server_that_never_answers_changes_nothing(self):
        with silent_server() as listener:
            program = self.start_with_updates_from("http://127.0.0.1:%d"
                                                   % listener.getsockname()[1])
            connection, _ = listener.accept()
            self.assert_nothing_is_said(program)

            with connection, connection.makefile("rb") as question:
                connection.settimeout(60)
                self.assertTrue(question.read().startswith(b"GET /builds/latest.json?ts="))
            self.assert_nothing_is_said(program)

    def test_no_server_changes_nothing(self):
        with silent_server() as listener:
            port = listener.getsockname()[1]
        self.assert_nothing_is_said(self.start_with_updates_from("http://127.0.0.1:%d" % port))
