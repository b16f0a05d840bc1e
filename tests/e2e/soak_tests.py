"""After many takes the program holds no more than after a few."""

import os
import time

from delivery_tests import DeliveryCase
from soak import Soak

TAKES = int(os.environ.get("QUORVIN_SOAK_TAKES", "50"))
FIRST_TAKES = 100 if TAKES > 100 else 10
# Before a hundred takes the lists of the program are still filling up.
LARGEST_GROWTH_MIB = 5 if FIRST_TAKES == 100 else 40


def report(name, value, unit):
    print("soak.%s %g %s" % (name, value, unit), flush=True)


class SoakTests(DeliveryCase):
    def test_many_takes_leave_nothing_behind(self):
        self.send_plain_drafts()
        terminal = self.open_terminal(place="+640+500")
        program = self.start_ready_program()
        soak = Soak(program, self.desktop, self.home, terminal)

        soak.take(FIRST_TAKES)
        before = soak.rest()
        start = time.monotonic()
        soak.take(TAKES - FIRST_TAKES)
        seconds = time.monotonic() - start
        after = soak.rest(at_most=before)

        growth = after.memory - before.memory
        report("takes", TAKES, "count")
        report("take", seconds / (TAKES - FIRST_TAKES), "s")
        for name, count in before.counts().items():
            report(name + "_before", count, "count")
            report(name + "_after", after.counts()[name], "count")
        report("memory_before", before.memory, "MiB")
        report("memory_after", after.memory, "MiB")
        report("memory_growth", growth, "MiB")
        self.assertTrue(after.has_no_more_than(before), "%s, later %s" % (before, after))
        self.assertLess(growth, LARGEST_GROWTH_MIB)
