"""The recognisers that tests install as whisper-cpp in a user's PATH: texts of scripts."""

import os

STAND_IN = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))),
                        "stand_in", "whisper-cpp")


def pocketsphinx_engine():
    """Really recognises English speech."""
    with open(STAND_IN, encoding="utf-8") as script:
        return script.read()


def speaking_engine(text):
    """Says the same whatever it hears; for tests that are not about recognition."""
    return "#!/bin/sh\necho ' %s'\n" % text


def waiting_engine():
    """Never comes to an end by itself."""
    return "#!/bin/sh\nexec sleep infinity\n"


def failing_engine(message):
    return "#!/bin/sh\necho '%s' >&2\nexit 3\n" % message
