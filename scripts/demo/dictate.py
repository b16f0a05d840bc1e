#!/usr/bin/python3
"""Shows the program at work where there is no screen and no microphone.

On a virtual display with a virtual microphone the program is used by mouse and keyboard: a sentence
is spoken, recognised, becomes the draft and is sent to an agent in a terminal, which is a stand-in.
The text goes to standard output, what the agent was told to standard error, pictures of the screen
and the program's log to the output directory.

The user's own whisper-cli and model are used if the program finds them, otherwise a stand-in.
"""

import argparse
import os
import signal
import sys
from contextlib import ExitStack

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tests/e2e"))

from desktop import AgentTerminal, Desktop, Home, Program, pocketsphinx_engine

SENTENCE = "please run the unit tests and fix the first failure"


def tell(text):
    print(text, file=sys.stderr, flush=True)


def environment_with_engine(program, desktop, home, output):
    """The surroundings in which the program finds a recogniser.

    Only the program knows where it looks, so it is asked: does it, started with the user's own home
    and commands, get ready with an engine? Settings and history are private all the same.
    """
    own = {**home.environment, "HOME": os.environ["HOME"], "PATH": os.environ["PATH"]}
    with Program([program], desktop, own, os.path.join(output, "search.log")) as trial:
        trial.wait_for_log("WhisperService ready")
        found = "WhisperService ready (binary + model)" in trial.log
    if found:
        tell("Recogniser: the one installed here")
        return own
    tell("Recogniser: a stand-in, PocketSphinx; no whisper-cli with a model is installed here")
    home.install_engine(pocketsphinx_engine())
    return home.environment


def dictate(running, desktop, output):
    """Speaks the sentence and returns the draft that comes of it."""
    running.record()
    tell("Saying: " + SENTENCE)
    with desktop.sound.playing(desktop.speech.wav(SENTENCE)):
        running.wait_until(lambda: running.state() >= "REC 00:02", "two seconds of the take")
        running.screenshot(os.path.join(output, "2-recording.png"))
    running.press("ctrl+r")
    running.wait_until_idle()
    running.screenshot(os.path.join(output, "3-transcribed.png"))
    return running.draft()


def deliver(running, terminal, output):
    """Sends the draft and returns the texts that the agent was told."""
    running.click("Claude")
    running.wait_for_activity("Sent to Claude successfully")
    terminal.wait_for_submission()
    running.screenshot(os.path.join(output, "4-delivered.png"))
    return terminal.submitted


def demonstrate(program, output):
    """Returns the draft and the texts that the agent was told."""
    with ExitStack() as stack:
        desktop = stack.enter_context(Desktop())
        home = Home(os.path.join(desktop.directory, "home"))
        environment = environment_with_engine(program, desktop, home, output)
        terminal = stack.enter_context(AgentTerminal(desktop, home))
        log_path = os.path.join(output, "program.log")
        running = stack.enter_context(Program([program], desktop, environment, log_path))
        running.wait_until_ready()
        running.open_draft()
        running.open_activity()
        running.screenshot(os.path.join(output, "1-ready.png"))
        draft = dictate(running, desktop, output)
        return draft, deliver(running, terminal, output) if draft else []


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("program", help="the executable")
    parser.add_argument("output", help="directory for the pictures and the log")
    arguments = parser.parse_args()
    os.makedirs(arguments.output, exist_ok=True)
    # As an exception, so that everything started is ended on the way out.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))

    draft, told = demonstrate(os.path.abspath(arguments.program), arguments.output)
    tell("Pictures of the screen: %s" % arguments.output)
    if not draft:
        sys.exit("No text was recognised; see %s" % os.path.join(arguments.output, "program.log"))
    print(draft)
    if len(told) != 1 or not told[0].endswith("\n" + draft):
        sys.exit("The agent was not told the text: %r" % told)
    tell("The agent in the terminal was told this text for orchestrators and the draft after it:\n"
         + told[0])


if __name__ == "__main__":
    main()
