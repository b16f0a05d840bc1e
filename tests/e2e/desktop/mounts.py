"""Programs that see other file systems than the rest of the system does."""

import os


def with_mounts(set_up):
    """The beginning of a command line that makes mounts of its own by a shell script.

    What follows takes the place of the process and sees them. It runs as the same user, whom the
    message bus and the sound server want to know, without any right to change the mounts.
    """
    own = back = ()
    if os.geteuid() != 0:
        own = ("--user", "--map-root-user")
        back = ("unshare", "--user", "--map-user=%d" % os.geteuid(),
                "--map-group=%d" % os.getegid())
    return ["unshare", *own, "--mount", "sh", "-c", 'set -eu\n%s\ncd /\nexec "$@"' % set_up, "sh",
            *back]


def seen_by(pid, path):
    """Where a path of another process' view is found in this one's, as long as that one lives."""
    return "/proc/%d/root%s" % (pid, path)
