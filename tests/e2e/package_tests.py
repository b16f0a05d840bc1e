"""The packages on a machine that has never seen the build tree."""

import configparser
import os
import shlex
import subprocess
import tempfile
import xml.etree.ElementTree
from pathlib import Path

from desktop import Program
from desktop.mounts import seen_by, with_mounts
from desktop.packages import SOURCE_TREE, build_tree, make_packages, unpack
from program_test import ProgramTest


def strange_machine(usr=None):
    """The mounts that hide where the packages were made, and lay a directory over /usr."""
    mounts = ["mount -t overlay overlay -o %s /usr" % shlex.quote("lowerdir=%s:/usr" % usr)
              ] if usr else []
    for tree in (str(SOURCE_TREE), str(build_tree())):
        mounts.append("[ ! -e {0} ] || mount -t tmpfs tmpfs {0}".format(shlex.quote(tree)))
    return "\n".join(mounts)


def complaints(*checker):
    """What a checker writes, and that it failed."""
    result = subprocess.run(checker, check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                            encoding="utf-8")
    failure = ["%s ended with %d" % (checker[0], result.returncode)] if result.returncode else []
    return result.stdout.splitlines() + failure


class PackageTests(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.archive, cls.debian_package = make_packages(cls.make_directory())

    @classmethod
    def make_directory(cls):
        return Path(tempfile.mkdtemp(dir=cls.desktop.directory))

    def install_debian_package(self):
        """Installs it into a fresh root whose list of packages is that of this machine."""
        root = self.make_directory()
        database = root / "var/lib/dpkg"
        for directory in ("info", "updates", "triggers"):
            os.makedirs(database / directory)
        (database / "status").write_bytes(Path("/var/lib/dpkg/status").read_bytes())
        # The files are root's.
        as_root = () if os.geteuid() == 0 else ("unshare", "--user", "--map-root-user")
        result = subprocess.run(
            [*as_root, "dpkg", "--root=%s" % root, "--log=/dev/null", "--force-bad-path",
             "--install", self.debian_package],
            check=False, capture_output=True, encoding="utf-8")
        # Also when something that it depends on is missing.
        self.assertEqual(result.returncode, 0, result.stderr)
        return root

    @staticmethod
    def version():
        return (build_tree() / "share/quorvin/version").read_text("utf-8").strip()

    def start_on_strange_machine(self, executable, usr=None):
        program = self.enterContext(Program(
            [*with_mounts(strange_machine(usr)), str(executable)], self.desktop,
            self.home.environment, os.path.join(self.output, "program.log")))
        self.addCleanup(program.screenshot, os.path.join(self.output, "screen.png"))
        return program

    def wait_for_own_sound(self, recorder, program):
        """Reads what comes out of the speakers up to the first byte that isn't silence."""
        program.wait_until(lambda: any(recorder.stdout.read(4096)), "a sound of the program")

    def assert_works(self, program, executable):
        """It shows its window, knows its version, finds its sounds, takes, and ends in order."""
        program.wait_until_ready()
        self.assertEqual(os.readlink("/proc/%d/exe" % program.pid), str(executable))
        for tree in (SOURCE_TREE / "CMakeLists.txt", os.environ["QUORVIN_EXECUTABLE"]):
            self.assertFalse(os.path.exists(seen_by(program.pid, tree)))
        program.wait_for_control("Quorvin v" + self.version())
        with subprocess.Popen(["parec", "--raw", "--device=speakers.monitor"],
                              env=self.desktop.environment, stdout=subprocess.PIPE) as recorder:
            program.record()
            self.wait_for_own_sound(recorder, program)
            recorder.kill()
        program.press("Escape")
        program.wait_until_idle()
        program.end()
        self.assertIn("History database closed", program.log)

    def test_the_bundle_runs_from_any_directory(self):
        bundle = unpack(self.archive, self.make_directory() / "Peter's \"own\" äpps")

        executable = bundle / "bin/quorvin"
        self.assert_works(self.start_on_strange_machine(executable), executable)

    def test_the_installed_debian_package_runs(self):
        root = self.install_debian_package()

        program = self.start_on_strange_machine("quorvin", usr=root / "usr")
        self.assert_works(program, "/usr/bin/quorvin")

    def test_the_desktop_knows_whose_the_window_is(self):
        bundle = unpack(self.archive, self.make_directory())
        entry = configparser.ConfigParser(interpolation=None)
        entry.read(bundle / "share/applications/quorvin.desktop", "utf-8")
        program = self.start_on_strange_machine(bundle / "bin/quorvin")

        window_class = subprocess.run(["xprop", "-id", program.wait_for_window(), "WM_CLASS"],
                                      env=self.desktop.environment, check=True,
                                      capture_output=True, encoding="utf-8").stdout

        self.assertIn('"%s"\n' % entry["Desktop Entry"]["StartupWMClass"], window_class)

    def test_the_debian_package_keeps_to_debians_rules(self):
        errors = [line for line in complaints("lintian", "--allow-root", "--fail-on", "error",
                                              str(self.debian_package))
                  if not line.startswith("W: ")]

        self.assertEqual(errors, [])

    def test_the_files_for_the_desktop_are_valid(self):
        usr = self.install_debian_package() / "usr"

        self.assertEqual(complaints("desktop-file-validate",
                                    str(usr / "share/applications/quorvin.desktop")), [])
        [verdict] = complaints("appstreamcli", "validate", "--no-net", "--no-color", str(
            usr / "share/metainfo/com.quorvin.quorvin.metainfo.xml"))
        self.assertIn("Validation was successful.", verdict)
        page = complaints("man", "--local-file", "--warnings",
                          str(usr / "share/man/man1/quorvin.1.gz"))
        self.assertFalse([line for line in page if "warning" in line or "ended with" in line])

    def test_all_that_tells_a_version_tells_that_of_the_program(self):
        bundle = unpack(self.archive, self.make_directory())
        description = xml.etree.ElementTree.parse(
            bundle / "share/metainfo/com.quorvin.quorvin.metainfo.xml")

        newest = description.find("releases/release").get("version")

        self.assertEqual(newest, self.version())
        self.assertEqual((bundle / "share/quorvin/version").read_text("utf-8").strip(), newest)
        self.assertIn("Quorvin-%s-linux-" % newest, self.archive.name)
        self.assertIn("quorvin_%s-" % newest, self.debian_package.name)

    def test_the_checksums_are_those_of_the_files(self):
        root = self.make_directory()
        subprocess.run(["dpkg-deb", "--raw-extract", self.debian_package, root], check=True)

        subprocess.run(["md5sum", "--check", "--strict", "--quiet", "DEBIAN/md5sums"], cwd=root,
                       check=True)

        listed = (root / "DEBIAN/md5sums").read_text("utf-8").splitlines()
        files = [path for path in (root / "usr").rglob("*") if path.is_file()]
        self.assertEqual(len(listed), len(files))

    def test_the_bundle_lists_the_packages_it_needs(self):
        bundle = unpack(self.archive, self.make_directory())

        needed = (bundle / "share/doc/quorvin/packages").read_text("utf-8").split()

        self.assertIn("libqt6core6", needed)
        self.assertIn("qml6-module-qtquick-controls", needed)
        states = complaints("dpkg-query", "--show", "--showformat=${db:Status-Status}\\n", *needed)
        self.assertEqual(states, ["installed"] * len(needed))

    def test_the_same_program_gives_the_same_packages(self):
        again = make_packages(self.make_directory())

        self.assertEqual([path.read_bytes() for path in again],
                         [self.archive.read_bytes(), self.debian_package.read_bytes()])
