"""A private desktop for one test: display, session bus, sound server and the program on it."""

from .desktop import Desktop
from .engines import failing_engine, pocketsphinx_engine, speaking_engine, waiting_engine
from .home import Home
from .processes import wait_until
from .program import Program
from .terminal import AgentTerminal
from .tray import StatusNotifierWatcher
from .words import word_errors

__all__ = ["AgentTerminal", "Desktop", "Home", "Program", "StatusNotifierWatcher", "failing_engine",
           "pocketsphinx_engine", "speaking_engine", "wait_until", "waiting_engine", "word_errors"]
